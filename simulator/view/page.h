// The page: HTML, style and script in one text, from the files in page/.
#pragma once

#include <string_view>

namespace k7sim {

extern const std::string_view kPage;

}  // namespace k7sim
