// Tests that run over a serial and a TCP link: INSTANTIATE_TEST_SUITE_P(, Suite, kBothLinks,
// LinkName).
#pragma once

#include <gtest/gtest.h>

#include <cstdint>
#include <string>

#include "k7/driver.h"

namespace k7test {

inline const auto kBothLinks = testing::Values(k7::kLinkSerial, k7::kLinkTcp);

inline std::string LinkName(const testing::TestParamInfo<std::uint32_t>& type) {
  return type.param == k7::kLinkTcp ? "Tcp" : "Serial";
}

}  // namespace k7test
