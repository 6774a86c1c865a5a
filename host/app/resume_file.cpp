#include "app/resume_file.h"

#include <fstream>
#include <iterator>
#include <optional>

#include "app/console.h"
#include "app/watchdog.h"
#include "args/words_to_resume.h"
#include "core/text.h"

namespace k7host {
namespace {

namespace fs = std::filesystem;

std::optional<ResumePoint> ReadPoint(const fs::path& path) {
  std::ifstream in(path, std::ios::binary);
  if (!in) return std::nullopt;
  const std::string text((std::istreambuf_iterator<char>(in)), std::istreambuf_iterator<char>());
  return ReadResume(text);
}

}  // namespace

ResumeKeeper::ResumeKeeper(const Arguments& arguments, const std::string& controller,
                           const std::string& plan, std::uint32_t strokesTotal,
                           std::function<std::uint32_t()> strokesDone)
    : strokesDone_(std::move(strokesDone)) {
  std::error_code ignored;
  point_.words = WordsToResume(arguments.words);
  point_.folder = NarrowText(fs::current_path(ignored).wstring());
  point_.controller = controller;
  point_.strokesTotal = strokesTotal;
  point_.plan = plan;
  shown_ = !arguments.resume.empty()     ? arguments.resume
           : !arguments.resumeTo.empty() ? arguments.resumeTo
                                         : arguments.file + ".resume";
  path_ = fs::absolute(WideText(shown_), ignored);
  TheWatch().SetLastWords([this] { Keep(); });
}

ResumeKeeper::~ResumeKeeper() {
  TheWatch().SetLastWords(nullptr);
}

void ResumeKeeper::Keep() const {
  ResumePoint point = point_;
  point.strokesDone = strokesDone_();
  if (point.strokesDone == 0 || point.strokesDone > point.strokesTotal) return;
  std::ofstream out(path_, std::ios::binary | std::ios::trunc);
  out << ResumeText(point) << std::flush;
  if (!out) {
    Notice("cannot write " + shown_ + "; to go on: --from-stroke " +
           std::to_string(point.strokesDone + 1));
    return;
  }
  Notice("to go on after stroke " + std::to_string(point.strokesDone) + " of " +
         std::to_string(point.strokesTotal) + ": k7host engrave --resume " + shown_);
}

void ResumeKeeper::Forget() const {
  std::error_code ignored;
  if (ReadPoint(path_)) fs::remove(path_, ignored);
}

ResumedJob LoadResume(const Arguments& arguments) {
  ResumedJob job;
  const auto fail = [&](const std::string& why) {
    job.exitCode = Fail(kExitUsage, arguments.resume + ": " + why);
    return job;
  };
  std::error_code error;
  const fs::path path = fs::absolute(WideText(arguments.resume), error);
  if (!fs::exists(path, error)) return fail("there is no such file");
  const std::optional<ResumePoint> point = ReadPoint(path);
  if (!point) return fail("this is no file that k7host keeps for going on with a job");
  if (point->strokesDone == point->strokesTotal) return fail("every stroke is done");
  const ParsedArguments parsed = ParseArguments(point->words);
  if (!parsed.arguments || parsed.arguments->command != Command::Engrave) {
    return fail("its command line cannot be read: " + parsed.error);
  }
  fs::current_path(WideText(point->folder), error);
  if (error) return fail("there is no folder " + point->folder + " any more");
  job.arguments = *parsed.arguments;
  job.arguments.words = point->words;
  job.arguments.resume = NarrowText(path.wstring());
  job.arguments.fromStroke = point->strokesDone + 1;
  job.arguments.noHome = arguments.noHome;
  job.arguments.batch = job.arguments.batch || arguments.batch;
  job.arguments.showSettings = arguments.showSettings;
  if (!arguments.id.empty()) job.arguments.id = arguments.id;
  if (job.arguments.id.empty()) job.arguments.id = point->controller;
  job.point = *point;
  return job;
}

}  // namespace k7host
