// SPDX-License-Identifier: MIT
#include <gtest/gtest.h>
#include <sys/stat.h>

#include <future>

#include "harness/hosts/machine.h"
#include "harness/temporary_folder.h"
#include "hostctl/lib/exception.h"
#include "linux/folder_lock.h"
#include "linux/network/ini_file.h"
#include "linux/network/own_files.h"

using namespace HostLinux;

namespace {

using Values = std::vector<std::string>;

// With what an operator may have done to it.
constexpr const char* kTouched =
    "# by hand\n[Match]\nName = tarn0 \n\n"
    "[Network]\nDNS=10.0.0.1\n;DNS=10.0.0.9\nDNS=10.0.0.2\n"
    "Domains=a.lan \\\n# still the same value\n  b.lan\nno assignment\n\n"
    "[Route]\nGateway=10.0.0.254\n"
    "[Address]\nAddress=10.0.0.5/24\n[Address]\nLabel=own\nAddress=10.0.0.6/24";

TEST(LinuxIniFile, ReadsWhatNetworkdReads) {
  const IniFile file(kTouched);
  EXPECT_EQ(file.Text(), kTouched);
  const std::tuple<const char*, const char*, const char*, Values> cases[] = {
      {"Match", "Name", "tarn0", {"tarn0"}},
      {"Network", "DNS", "10.0.0.2", {"10.0.0.1", "10.0.0.2"}},
      {"Network", "Domains", "a.lan b.lan", {"a.lan b.lan"}},
      {"Network", "no assignment", nullptr, {}},
      {"Route", "Name", nullptr, {}},
      {"Address", "Address", "10.0.0.6/24", {"10.0.0.5/24", "10.0.0.6/24"}}};
  for (const auto& [section, key, last, all] : cases) {
    EXPECT_EQ(file.Get(section, key), last ? std::optional<std::string>(last) : std::nullopt);
    EXPECT_EQ(file.GetAll(section, key), all) << key;
  }
  EXPECT_EQ(IniFile("[N]\nA=1\nA=\nA=2\n").GetAll("N", "A"), Values{"2"});
}

TEST(LinuxIniFile, ChangesAsLittleAsItCan) {
  using Change = void (*)(IniFile&);
  const std::tuple<const char*, Change, const char*> cases[] = {
      {"", [](IniFile& f) { f.Set("Match", "Name", "x"); }, "[Match]\nName=x\n"},
      {"# a", [](IniFile& f) { f.Set("M", "N", "x"); }, "# a\n\n[M]\nN=x\n"},
      {"[M]\nN = x\n", [](IniFile& f) { f.Set("M", "N", "x"); }, "[M]\nN = x\n"},
      {"[M]\nN=x\nN=y\n", [](IniFile& f) { f.Set("M", "N", "y"); }, "[M]\nN=y\n"},
      {"[M]\n\n[N]\nA=1", [](IniFile& f) { f.Set("N", "B", "2"); }, "[M]\n\n[N]\nA=1\nB=2\n"},
      {"[M]\nA=1\n\n[N]\n", [](IniFile& f) { f.Add("M", "A", "2"); }, "[M]\nA=1\nA=2\n\n[N]\n"},
      {"[M]\nA=1\n[M]\nB=1\n", [](IniFile& f) { f.Set("M", "B", "2"); }, "[M]\nA=1\n[M]\nB=2\n"},
      {"[M]\nA=1 \\\n2\n;c\nB=1\n", [](IniFile& f) { f.Remove("M", "A"); }, "[M]\n;c\nB=1\n"},
      {"[R]\nA=1\n[R]\nA=2\n#c\n[R]\nA=3\n",
       [](IniFile& f) {
         f.RemoveSections("R", [](const IniSection& one) { return one.Get("A") == "2"; });
       },
       "[R]\nA=1\n#c\n[R]\nA=3\n"}};
  for (const auto& [before, change, after] : cases) {
    IniFile file(before);
    change(file);
    EXPECT_EQ(file.Text(), after) << before;
  }
}

TEST(LinuxIniFile, RefusesWhatWouldBeReadOtherwise) {
  for (const char* bad : {"a\nb", "a\r", "\x1b[0m", " a", "a ", "a\\"})
    EXPECT_THROW(IniFile().Set("M", "N", bad), HostCtl::Lib::HostCtlException) << bad;
  for (const char* bad : {"", "../x", "a/b", "-a", "sixteenletters16"})
    EXPECT_THROW(ownFileName(bad, "network"), HostCtl::Lib::HostCtlException) << bad;
}

// What was in the folder at each step, as an operator sees it.
class LinuxOwnFiles : public testing::Test {
 protected:
  std::string Folder() const {
    std::string text;
    for (const auto& name : files_.List("/etc/systemd/network"))
      text += name + "=" + files_.Read("/etc/systemd/network/" + name).value_or("?") + " ";
    return text;
  }
  void TakeOver() {
    seen_.push_back(Folder());
    if (seen_.size() == refuseAt_) throw HostCtl::Lib::HostCtlException("networkd says no");
  }
  bool Change(const std::vector<FileChange>& changes) {
    return own_.Change("AddUplink", "pnic0", changes, [this] { TakeOver(); });
  }

  const Harness::TemporaryFolder folder_;
  const Files files_{folder_.Path()};
  const OwnFiles own_{files_};
  std::vector<std::string> seen_;
  std::size_t refuseAt_ = 0;
};

TEST_F(LinuxOwnFiles, TakenOverOnceAndOnlyWhenDifferent) {
  folder_.Write("/etc/systemd/network/50-others.network", "x");
  folder_.Write("/etc/systemd/network/10-kiva-a.network.Xy12", "half");
  const std::vector<FileChange> both = {{"10-kiva-a.network", "1"}, {"10-kiva-b.netdev", "2"}};
  EXPECT_TRUE(Change(both));
  EXPECT_FALSE(Change(both));
  EXPECT_FALSE(Change({{"10-kiva-c.netdev", std::nullopt}}));
  EXPECT_EQ(own_.List(), (Values{"10-kiva-a.network", "10-kiva-b.netdev"}));
  EXPECT_TRUE(Change({{"10-kiva-a.network", std::nullopt}}));
  EXPECT_EQ(seen_.size(), 2u);
  EXPECT_EQ(Folder(), "10-kiva-a.network.Xy12=half 10-kiva-b.netdev=2 50-others.network=x ");
}

TEST_F(LinuxOwnFiles, OneChangesTheNetworkAtATime) {
  const auto mask = umask(077);
  EXPECT_TRUE(Change({{"10-kiva-a.network", "1"}}));
  umask(0);
  const auto others = lockFolder(files_.Path("/etc/systemd/network"));
  std::optional sole(own_.Lock());
  umask(mask);
  EXPECT_EQ(ended("stat -c %a " + files_.Path("/run/kiva-network.lock")).output, "600\n")
      << "for nobody else to keep locked";
  for (const char* folder : {"/etc", "/etc/systemd", "/etc/systemd/network"})
    EXPECT_EQ(std::filesystem::status(files_.Path(folder)).permissions(),
              static_cast<std::filesystem::perms>(0755))
        << folder;
  EXPECT_EQ(failureOf([&] { own_.Lock(std::chrono::milliseconds(1)); }),
            "change the network: another change of it is under way");
  auto next = std::async(std::launch::async, [&] { OwnFiles(files_).Lock(); });
  EXPECT_EQ(next.wait_for(std::chrono::milliseconds(100)), std::future_status::timeout);
  sole.reset();
  EXPECT_EQ(next.wait_for(std::chrono::seconds(5)), std::future_status::ready);
}

TEST(LinuxStopsPutOff, WhatWasDoneWhenTheTimeRanOutWasDone) {
  const auto doneDespite = [](int signal) {
    std::optional<StopsPutOff> change(std::in_place);
    raise(signal);
    std::cerr << "done";
    change.reset();
    exit(0);
  };
  for (const int stop : {SIGQUIT, SIGTERM})
    EXPECT_EXIT(doneDespite(stop), testing::KilledBySignal(stop), "done");
  EXPECT_EXIT(doneDespite(SIGALRM), testing::ExitedWithCode(0), "done");
}

TEST_F(LinuxOwnFiles, RefusedFilesArePutBack) {
  ASSERT_TRUE(Change({{"10-kiva-a.network", "1"}, {"10-kiva-b.netdev", "2"}}));
  const std::string before = Folder();
  refuseAt_ = 2;
  const auto refused = failureOf([&] {
    Change({{"10-kiva-b.netdev", std::nullopt},
            {"10-kiva-a.network", "3"},
            {"10-kiva-c.netdev", "4"}});
  });
  EXPECT_EQ(refused, "networkd says no");
  ASSERT_EQ(seen_.size(), 3u);
  EXPECT_EQ(seen_[1], "10-kiva-a.network=3 10-kiva-c.netdev=4 ");
  EXPECT_EQ(seen_[2], before) << "networkd has the old files again";

  // What cannot be written: what was written before it goes back as well.
  folder_.Write("/etc/systemd/network/10-kiva-d.network/x", "");
  for (const auto& [name, why] : {std::pair(std::string("10-kiva-d.network"), "can be read"),
                                  std::pair(std::string(300, 'n'), "File name too long")}) {
    const auto failed = failureOf([&] { Change({{"10-kiva-a.network", "5"}, {name, "6"}}); });
    EXPECT_TRUE(failed.starts_with("AddUplink pnic0: ") && failed.find(why) != failed.npos)
        << failed;
  }
  EXPECT_EQ(own_.Read("10-kiva-a.network").Text(), "1");
  EXPECT_EQ(seen_.size(), 3u) << "of these networkd was never told";

  // Nor does what cannot be put back keep the rest from it.
  const std::string c = "/etc/systemd/network/10-kiva-c.network";
  const auto blocked = [&] {
    std::filesystem::remove(files_.Path(c));
    folder_.Write(c + "/x", "");
    TakeOver();
  };
  refuseAt_ = 4;
  const std::vector<FileChange> two = {{"10-kiva-a.network", "7"}, {"10-kiva-c.network", "8"}};
  EXPECT_EQ(failureOf([&] { own_.Change("op", "object", two, blocked); }), "networkd says no");
  EXPECT_EQ(own_.Read("10-kiva-a.network").Text(), "1");
}

}  // namespace
