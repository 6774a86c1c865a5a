// The module leaves nothing behind in the host: it is loaded and unloaded again and again.
#include <gtest/gtest.h>
#include <windows.h>
// After windows.h, whose types it needs.
#include <psapi.h>

#include <cstdint>
#include <string>

namespace {

using Enumerate = std::int32_t (*)();

DWORD Handles() {
  DWORD count = 0;
  GetProcessHandleCount(GetCurrentProcess(), &count);
  return count;
}

SIZE_T PrivateBytes() {
  PROCESS_MEMORY_COUNTERS_EX counters{};
  GetProcessMemoryInfo(GetCurrentProcess(), reinterpret_cast<PROCESS_MEMORY_COUNTERS*>(&counters),
                       sizeof counters);
  return counters.PrivateUsage;
}

// The next index that the system would give out: it grows with every one that is not given back.
DWORD NextThreadLocalIndex() {
  const DWORD index = TlsAlloc();
  TlsFree(index);
  return index;
}

void Cycle(bool search) {
  const HMODULE module = LoadLibraryW(L"k7driver.dll");
  ASSERT_NE(module, nullptr);
  if (search) {
    const auto enumerate = reinterpret_cast<Enumerate>(
        reinterpret_cast<void*>(GetProcAddress(module, "EnumerateControllers")));
    EXPECT_EQ(enumerate(), 0);
  }
  ASSERT_TRUE(FreeLibrary(module));
  ASSERT_EQ(GetModuleHandleW(L"k7driver.dll"), nullptr);
}

enum class Use { Alone, Search, TracedSearch };

class LoadCycle : public testing::TestWithParam<Use> {
 protected:
  LoadCycle() {
    if (GetParam() == Use::TracedSearch) SetEnvironmentVariableW(L"K7_TRACE", L"load_cycle.txt");
  }
  ~LoadCycle() override {
    SetEnvironmentVariableW(L"K7_TRACE", nullptr);
    DeleteFileW(L"load_cycle.txt");
  }
};
std::string NameOf(const testing::TestParamInfo<Use>& use) {
  switch (use.param) {
    case Use::Alone:
      return "Alone";
    case Use::Search:
      return "WithASearch";
    default:
      return "WithATracedSearch";
  }
}
INSTANTIATE_TEST_SUITE_P(, LoadCycle, testing::Values(Use::Alone, Use::Search, Use::TracedSearch),
                         NameOf);

TEST_P(LoadCycle, LeavesNoIndexNoHandleAndNoMemoryBehind) {
  const bool search = GetParam() != Use::Alone;
  const int cycles = GetParam() == Use::Alone ? 500 : GetParam() == Use::Search ? 100 : 15;
  for (int i = 0; i < 20; ++i) Cycle(search);  // what the system keeps for itself
  const DWORD handles = Handles();
  const DWORD index = NextThreadLocalIndex();
  const SIZE_T bytes = PrivateBytes();
  for (int i = 0; i < cycles; ++i) Cycle(search);
  EXPECT_EQ(Handles(), handles);
  EXPECT_EQ(NextThreadLocalIndex(), index);
  EXPECT_LT(PrivateBytes(), bytes + static_cast<SIZE_T>(cycles) * 1024) << "a kilobyte a cycle";
}

}  // namespace
