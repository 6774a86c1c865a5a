// What of a command line is given again when a job goes on.
#pragma once

#include <string>
#include <vector>

namespace k7host {

// The words of a command line without the options that belong to one run of a job only, as they are
// kept for going on with it. [any]
std::vector<std::string> WordsToResume(const std::vector<std::string>& words);

}  // namespace k7host
