// The file from which `k7host engrave --resume` goes on with a job that ended early.
#pragma once

#include <cstdint>
#include <filesystem>
#include <functional>
#include <string>

#include "args/arguments.h"
#include "core/resume.h"

namespace k7host {

// Keeps what is needed to go on with a job: when told to, and when the program is ended at once by
// the user in the middle of it. [host]
class ResumeKeeper {
 public:
  // `strokesDone` may be called from any thread.
  ResumeKeeper(const Arguments& arguments, const std::string& controller, const std::string& plan,
               std::uint32_t strokesTotal, std::function<std::uint32_t()> strokesDone);
  ~ResumeKeeper();
  ResumeKeeper(const ResumeKeeper&) = delete;
  ResumeKeeper& operator=(const ResumeKeeper&) = delete;

  // Writes the file and says how to go on; nothing when no stroke is done. [any]
  void Keep() const;

  // Removes a file of an earlier run: the job is done.
  void Forget() const;

 private:
  ResumePoint point_;
  std::function<std::uint32_t()> strokesDone_;
  std::filesystem::path path_;
  std::string shown_;  // the path as the user knows it
};

struct ResumedJob {
  Arguments arguments;  // those of the job, made to go on
  ResumePoint point;
  int exitCode = kExitOk;  // anything else has been explained
};

// Reads the file of --resume and changes to the folder of the job. [host]
ResumedJob LoadResume(const Arguments& arguments);

}  // namespace k7host
