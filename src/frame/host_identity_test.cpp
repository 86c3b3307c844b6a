#include "frame/host_identity.h"

#include "frame/frame_fixture.h"

namespace kwo::frame {
namespace {

class HostIdentityTest : public FrameTest {};

TEST_F(HostIdentityTest, NamesAreAskedOnceAndKept) {
    EXPECT_EQ(identity.KWO_ComputerName(), u"PC01");
    EXPECT_EQ(identity.KWO_UserName(), u"jdoe");
    desktop.host.computerName = u"OTHER";
    desktop.host.networkUserName = u"other";
    EXPECT_EQ(identity.KWO_ComputerName(), u"PC01");
    EXPECT_EQ(identity.KWO_UserName(), u"jdoe");
}

TEST_F(HostIdentityTest, AFailedLookupIsEmptyAndNotRetried) {
    desktop.FailCall("GetComputerName", 1, 5);
    desktop.FailCall("WNetGetUser", 1, 5);
    desktop.FailCall("GetUserName", 1, 5);
    for (int n = 0; n < 2; ++n) {
        EXPECT_EQ(identity.KWO_ComputerName(), u"");
        EXPECT_EQ(identity.KWO_UserName(), u"");
    }
}

TEST_F(HostIdentityTest, TheUserOfTheNetworkGoesBeforeTheOneOfTheMachine) {
    desktop.host.networkUserName = u"network";
    desktop.host.userName = u"machine";
    EXPECT_EQ(identity.KWO_UserName(), u"network");
    HostIdentity other(services.host);
    desktop.FailCall("WNetGetUser", 1, 1222);
    EXPECT_EQ(other.KWO_UserName(), u"machine");
}

TEST_F(HostIdentityTest, IsCompiledUnlessTheModuleIsADevelopmentEnvironment) {
    struct Row {
        TextView module;
        bool compiled;
    };
    for (const Row& row : {Row{u"C:\\a\\KWOUtil.dll", true}, Row{u"C:\\a\\KwoDev.exe", false},
                           Row{u"KWODEV64.EXE", false}, Row{u"C:\\KWODEV.EXE\\other.exe", true}, Row{u"", true}}) {
        desktop.host.moduleFileName = row.module;
        HostIdentity fresh(services.host);
        EXPECT_EQ(fresh.KWO_IsCompiled(), row.compiled) << std::string(row.module.begin(), row.module.end());
    }
}

TEST_F(HostIdentityTest, WinNtIsPlatformTwoAskedOnce) {
    EXPECT_TRUE(identity.KWO_IsWinNT());
    LeaveTheNtFamily();
    EXPECT_TRUE(identity.KWO_IsWinNT());
    HostIdentity other(services.host);
    EXPECT_FALSE(other.KWO_IsWinNT());
    desktop.host.platform.platformId = 2;
    desktop.FailCall("GetVersionEx", 1, 87);
    HostIdentity failing(services.host);
    EXPECT_FALSE(failing.KWO_IsWinNT());
}

}  // namespace
}  // namespace kwo::frame
