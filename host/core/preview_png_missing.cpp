// For a build without stb: there are no PNG previews.
#include "core/preview.h"

namespace k7host {

std::string PreviewPng(const JobPlan&, const Table&) {
  return {};
}

}  // namespace k7host
