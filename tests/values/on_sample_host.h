// SPDX-License-Identifier: MIT
#pragma once

#include <gtest/gtest.h>

#include <functional>
#include <memory>

#include "harness/demo_host.h"
#include "harness/hosts/machine.h"
#include "hostseam/driver.h"
#include "sample/sample_host.h"
#include "tarnctl/network/network_info_impl.h"

namespace HostSample {

/// A change, and what shall come of it.
using Step = std::pair<std::function<void()>, std::string>;

/// What the library and its seam make of a sample host of the test's own.
class OnSampleHost : public testing::Test {
 protected:
  explicit OnSampleHost(const nlohmann::json& changes = nlohmann::json::object()) : host(changes) {
    useSampleHost(host.Directory());
  }

  static HostSeam::NetworkWriter& Writer() { return HostSeam::driver().Network(); }
  static std::unique_ptr<HostCtl::Network::TarnNic> Nic() {
    return std::move(TarnCtl::Network::NetworkInfoImpl().GetTarnNics().at(0));
  }

  /// Expects the changes to fail with these texts (or, where empty, not), and no byte to change.
  void ExpectSame(const std::vector<Step>& steps) const {
    const std::string before = host.Text();
    for (std::size_t i = 0; i < steps.size(); ++i) {
      EXPECT_EQ(HostLinux::failureOf(steps[i].first), steps[i].second);
      EXPECT_EQ(host.Text(), before) << "written, be it only in another layout, by " << i;
    }
  }

  Harness::DemoHost host;
};

}  // namespace HostSample
