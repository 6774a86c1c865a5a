#include "host_program.h"

#include <fstream>
#include <iterator>

namespace k7test {

namespace fs = std::filesystem;

namespace {

std::string ReadAll(const fs::path& path) {
  std::ifstream in(path, std::ios::binary);
  std::string text((std::istreambuf_iterator<char>(in)), std::istreambuf_iterator<char>());
  std::erase(text, '\r');
  return text;
}

fs::path BinFolder() {
  wchar_t path[1024] = {};
  GetModuleFileNameW(nullptr, path, 1024);
  return fs::path(path).parent_path();
}

HANDLE Open(const fs::path& path, DWORD access, DWORD how, SECURITY_ATTRIBUTES& inherit) {
  return CreateFileW(path.c_str(), access, FILE_SHARE_READ | FILE_SHARE_WRITE, &inherit, how, 0,
                     nullptr);
}

}  // namespace

void Program::SetUp() {
  const auto* test = testing::UnitTest::GetInstance()->current_test_info();
  folder_ = BinFolder() / "host_program_test" /
            (std::string(test->test_suite_name()) + "." + test->name());
  std::error_code ignored;
  fs::remove_all(folder_, ignored);
  fs::create_directories(folder_);
  fs::copy_file(BinFolder() / "k7host.exe", folder_ / "k7host.exe");
  fs::copy_file(BinFolder() / "host_fake" / "k7driver.dll", folder_ / "k7driver.dll");
  Set("K7_FAKE_LOG", (folder_ / "log.txt").string());
}

void Program::TearDown() {
  for (const auto& [name, value] : set_) SetEnvironmentVariableA(name.c_str(), nullptr);
}

void Program::Set(const std::string& name, const std::string& value) {
  set_[name] = value;
  SetEnvironmentVariableA(name.c_str(), value.c_str());
}

std::string Program::File(const std::string& text) {
  std::ofstream(folder_ / "a.plt", std::ios::binary) << text;
  return "a.plt";
}

HANDLE Program::Start(const std::string& arguments) {
  SECURITY_ATTRIBUTES inherit{sizeof inherit, nullptr, TRUE};
  STARTUPINFOW startup{};
  startup.cb = sizeof startup;
  startup.dwFlags = STARTF_USESTDHANDLES;
  startup.hStdInput = Open(L"NUL", GENERIC_READ, OPEN_EXISTING, inherit);
  startup.hStdOutput = Open(folder_ / "out.txt", GENERIC_WRITE, CREATE_ALWAYS, inherit);
  startup.hStdError = Open(folder_ / "err.txt", GENERIC_WRITE, CREATE_ALWAYS, inherit);
  std::wstring line = L"k7host.exe " + std::wstring(arguments.begin(), arguments.end());
  PROCESS_INFORMATION process{};
  EXPECT_TRUE(CreateProcessW((folder_ / "k7host.exe").c_str(), line.data(), nullptr, nullptr, TRUE,
                             CREATE_NEW_PROCESS_GROUP, nullptr, folder_.c_str(), &startup,
                             &process));
  CloseHandle(process.hThread);
  CloseHandle(startup.hStdInput);
  CloseHandle(startup.hStdOutput);
  CloseHandle(startup.hStdError);
  processId_ = process.dwProcessId;
  return process.hProcess;
}

Outcome Program::Finish(HANDLE process) {
  Outcome run;
  EXPECT_EQ(WaitForSingleObject(process, 60000), WAIT_OBJECT_0);
  GetExitCodeProcess(process, &run.exitCode);
  if (run.exitCode == STILL_ACTIVE) TerminateProcess(process, 99);
  CloseHandle(process);
  run.out = ReadAll(folder_ / "out.txt");
  run.err = ReadAll(folder_ / "err.txt");
  run.log = Log();
  return run;
}

bool Program::WaitForError(const std::string& text) const {
  for (int i = 0; i < 1500; ++i) {
    if (ReadAll(folder_ / "err.txt").find(text) != std::string::npos) return true;
    Sleep(20);
  }
  return false;
}

std::string Program::Log() const {
  return ReadAll(folder_ / "log.txt");
}

void Program::ForgetLog() const {
  std::error_code ignored;
  fs::remove(folder_ / "log.txt", ignored);
}

void Program::ShareConsole() {
  const HANDLE console =
      CreateFileW(L"CONOUT$", GENERIC_WRITE, FILE_SHARE_WRITE, nullptr, OPEN_EXISTING, 0, nullptr);
  if (console != INVALID_HANDLE_VALUE) {
    CloseHandle(console);
    return;
  }
  FreeConsole();
  EXPECT_TRUE(AllocConsole());
}

void Program::Break() const {
  EXPECT_TRUE(GenerateConsoleCtrlEvent(CTRL_BREAK_EVENT, processId_) ||
              GenerateConsoleCtrlEvent(CTRL_C_EVENT, processId_));
}

}  // namespace k7test
