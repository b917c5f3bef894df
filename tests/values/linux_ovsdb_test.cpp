// SPDX-License-Identifier: MIT
#include <gtest/gtest.h>
#include <sys/socket.h>
#include <sys/un.h>

#include <filesystem>
#include <thread>

#include "harness/temporary_folder.h"
#include "hostctl/lib/descriptor.h"
#include "linux/network/ovs_uplinks.h"
#include "linux/network/ovsdb.h"

using namespace HostLinux;

namespace {

using HostCtl::Lib::Descriptor;

// As Open vSwitch 3.1 writes it: a switch with a controller, whose port b has two interfaces, and a
// switch without; from b on with columns that an older database has not.
constexpr const char* kAnswer =
    R"({"id":0,"result":[{"rows":[)"
    R"({"_uuid":["uuid","b1"],"name":"dvs0","ports":["set",[["uuid","p1"],["uuid","p2"]]],)"
    R"("controller":["uuid","c1"],"external_ids":["map",[["vendor","x"]]]},)"
    R"({"_uuid":["uuid","b2"],"name":"plain","ports":["uuid","p3"],"controller":["set",[]]}]},)"
    R"({"rows":[{"_uuid":["uuid","p1"],"interfaces":["uuid","i1"]},)"
    R"({"_uuid":["uuid","p2"],"name":"b","interfaces":["set",[["uuid","i2"],["uuid","i3"]]],)"
    R"("tag":20,"trunks":["set",[3,4]],"protected":true,"lacp":["set",[]],"vlan_mode":"access",)"
    R"("external_ids":["map",[["kiva-uplinks","eth6"],["say","\"a, b\""]]],)"
    R"("qos":["uuid","q1"]},)"
    R"({"_uuid":["uuid","p3"],"interfaces":["uuid","i4"]}]},)"
    R"({"rows":[{"name":"vm7","_uuid":["uuid","i1"]},{"name":"eth6","_uuid":["uuid","i2"]},)"
    R"({"name":"eth7","_uuid":["uuid","i3"]},{"name":"eth8","_uuid":["uuid","i4"]}]}],)"
    R"("error":null})";

const OvsInterfaces kKnown{{"vm7", "dvs0"}, {"eth6", "dvs0"}, {"eth7", "dvs0"}, {"eth8", ""}};

TEST(LinuxOvsDatabase, BridgesPortsAndInterfaces) {
  const auto bridges = ovsBridgesIn(kAnswer);
  ASSERT_TRUE(bridges);
  EXPECT_EQ(ovsInterfacesOf(*bridges), kKnown);
  const OvsPort& port = *findOnOvs(*bridges, "eth7").port;
  EXPECT_EQ(port.tag, 20);
  EXPECT_TRUE(port.isolated && isThirdParty(bridges->front()));
  EXPECT_EQ(usedUplinksOf(port), UsedUplinks({"eth6"}));
  const OvsChange::Settings settings{R"(external_ids={"kiva-uplinks"="eth6","say"="\"a, b\""})",
                                     "protected=true",
                                     "qos=q1",
                                     "tag=20",
                                     "trunks=[3,4]",
                                     R"(vlan_mode="access")"};
  EXPECT_EQ(port.settings, settings);
  for (const char* bad : {"", "[]", R"({"id":0,"result":null,"error":"no"})",
                          R"({"result":[{"rows":[{"name":"a"}]}]})", R"({"result":[{},{},{}]})"})
    EXPECT_FALSE(ovsBridgesIn(bad)) << bad;
}

TEST(LinuxOvsDatabase, BlockedInterfaces) {
  constexpr const char* kText =
      "OFPST_PORT_DESC reply (OF1.4) (xid=0x4):\n"
      " 1(eth0): addr:ce:49:b4:2c:2c:1d\n     config:     0\n     state:      NO_FWD\n"
      " 3(mgmt0): addr:ce:49:b4:2c:2c:1e\n     config:     PORT_DOWN NO_RECV NO_FWD\n"
      " LOCAL(dvs0): addr:46:f8:06:22:91:4c\n     config:     PORT_DOWN NO_FWD\n";
  EXPECT_EQ(blockedInterfacesIn(kText), (std::set<std::string>{"dvs0", "mgmt0"}));
  EXPECT_TRUE(blockedInterfacesIn("config: NO_FW\n)x(").empty());
}

// Answers one question with two halves, or takes it and says nothing more than the first.
class Database {
 public:
  Database(const std::string& root, bool whole) : whole_(whole) {
    sockaddr_un address{};
    address.sun_family = AF_UNIX;
    const std::string path = root + "/run/openvswitch/db.sock";
    std::filesystem::create_directories(std::filesystem::path(path).parent_path());
    std::filesystem::remove(path);
    path.copy(address.sun_path, sizeof address.sun_path - 1);
    bind(listening_.Get(), reinterpret_cast<sockaddr*>(&address), sizeof address);
    listen(listening_.Get(), 1);
    thread_ = std::thread([this] { Answer(); });
  }
  ~Database() { thread_.join(); }

 private:
  void Answer() {
    const Descriptor peer(accept(listening_.Get(), nullptr, nullptr));
    char question[1024];
    recv(peer.Get(), question, sizeof question, 0);
    const std::string text = kAnswer;
    send(peer.Get(), text.data(), text.size() / 2, 0);
    std::this_thread::sleep_for(std::chrono::milliseconds(20));
    if (whole_) send(peer.Get(), text.data() + text.size() / 2, text.size() - text.size() / 2, 0);
    recv(peer.Get(), question, sizeof question, 0);
  }

  bool whole_;
  Descriptor listening_{socket(AF_UNIX, SOCK_STREAM | SOCK_CLOEXEC, 0)};
  std::thread thread_;
};

TEST(LinuxOvsDatabase, AskedSeldomAndNeverLong) {
  const Harness::TemporaryFolder folder;
  const Files files(folder.Path());
  OvsDatabase database;
  const OvsDatabase::Clock::time_point start{std::chrono::hours(1)};
  using std::chrono::seconds;
  EXPECT_EQ(database.Read(files, start), std::nullopt) << "it does not run";
  {
    const Database answers(folder.Path(), true);
    EXPECT_EQ(database.Read(files, start), kKnown);
  }
  EXPECT_EQ(database.Read(files, start + seconds(4)), kKnown) << "nobody is there to ask";
  const Database hangs(folder.Path(), false);
  const auto before = OvsDatabase::Clock::now();
  EXPECT_EQ(database.Read(files, start + seconds(6)), std::nullopt);
  EXPECT_LT(OvsDatabase::Clock::now() - before, std::chrono::milliseconds(1000));
}

}  // namespace
