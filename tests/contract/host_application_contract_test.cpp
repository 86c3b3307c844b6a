#include "contract_test.h"

namespace kwo::contract {
namespace {

class HostApplicationContract : public ContractTest {
protected:
    platform::HostApplication& host = platform().host;
};

TEST_F(HostApplicationContract, ExecutableHasANameWithoutFolderAndExtensionAndAFolder) {
    const Text name = host.ExecutableName();
    const Text folder = host.Folder();

    EXPECT_FALSE(name.empty());
    EXPECT_EQ(name.find_first_of(u"\\/."), Text::npos) << Printed(name);
    EXPECT_NE(platform().files.Attributes(folder), platform::FileSystem::kNoAttributes) << Printed(folder);
    const Text file = outside().ExistingFile();
    EXPECT_EQ(file.find(folder), 0u) << Printed(folder);
    EXPECT_NE(file.find(name), Text::npos) << Printed(name);
}

TEST_F(HostApplicationContract, TitleAndModuleAreKnown) {
    EXPECT_FALSE(host.Title().empty());
    const Text module = host.ModuleFileName();
    EXPECT_NE(module.find(u'\\'), Text::npos) << Printed(module);
    EXPECT_LE(module.size(), 255u);
    EXPECT_NE(host.ProcessId(), 0u);
    EXPECT_EQ(host.ProcessId(), host.ProcessId());
}

TEST_F(HostApplicationContract, ProductAndVersionAreThoseOfTheProgram) {
    const HostProgram program = outside().Host();
    EXPECT_EQ(Printed(host.ProductName()), Printed(program.productName));
    const platform::HostApplication::Version version = host.ProgramVersion();
    EXPECT_EQ(version.major, program.version.major);
    EXPECT_EQ(version.minor, program.version.minor);
    EXPECT_EQ(version.revision, program.version.revision);
}

TEST_F(HostApplicationContract, ALogEntryEndsAtItsFirstZeroAndLeavesTheLastErrorAlone) {
    outside().ListenToHostLog();
    platform().errors.SetLast(7);

    host.WriteLog(u"first entry");
    host.WriteLog(TextView(u"cut\0off", 7));

    EXPECT_EQ(outside().HostLogHeard(), (std::vector<std::string>{"first entry", "cut"}));
    EXPECT_EQ(platform().errors.Last(), 7);
}

TEST_F(HostApplicationContract, NamesEndBeforeTheirZero) {
    Text computer;
    Text user;
    Text networkUser;

    ASSERT_TRUE(host.ComputerName(computer));
    EXPECT_GE(computer.size(), 1u);
    EXPECT_LE(computer.size(), 15u);
    EXPECT_EQ(computer.find(u'\0'), Text::npos);
    ASSERT_TRUE(host.UserName(user));
    EXPECT_GE(user.size(), 1u);
    EXPECT_EQ(user.find(u'\0'), Text::npos);
    if (host.NetworkUserName(networkUser)) {
        EXPECT_GE(networkUser.size(), 1u);
        EXPECT_EQ(networkUser.find(u'\0'), Text::npos);
    }
}

TEST_F(HostApplicationContract, PlatformIsOfTheNtFamily) {
    platform::HostApplication::Platform record;

    ASSERT_TRUE(host.QueryPlatform(record));
    EXPECT_EQ(record.platformId, 2u);
    EXPECT_GE(record.majorVersion, 5u);
    EXPECT_GT(record.buildNumber, 0u);
}

TEST_F(HostApplicationContract, TheLibraryIsInAFolder) {
    const Text folder = host.LibraryFolder();
    EXPECT_NE(platform().files.Attributes(folder), platform::FileSystem::kNoAttributes) << Printed(folder);
    EXPECT_NE(folder.back(), u'\\');
}

TEST_F(HostApplicationContract, TheEnvironmentIsAskedEachTime) {
    EXPECT_EQ(host.EnvironmentVariable(u"KWO_CONTRACT"), u"");
    outside().SetEnvironmentVariable(u"KWO_CONTRACT", u"first");
    EXPECT_EQ(host.EnvironmentVariable(u"KWO_CONTRACT"), u"first");
    for (const std::size_t length : {254u, 255u, 256u, 257u, 32'766u}) {
        outside().SetEnvironmentVariable(u"KWO_CONTRACT", Text(length, u'x'));
        EXPECT_EQ(host.EnvironmentVariable(u"KWO_CONTRACT"), Text(length, u'x')) << length;
    }
    outside().SetEnvironmentVariable(u"KWO_CONTRACT", u"");
}

TEST_F(HostApplicationContract, DirectoriesTellHowMuchRoomTheyNeed) {
    using Query = std::uint32_t (platform::HostApplication::*)(std::string&);
    for (const Query query :
         {Query(&platform::HostApplication::SystemDirectory), Query(&platform::HostApplication::WindowsDirectory)}) {
        std::string buffer(260, ' ');
        const std::uint32_t length = (host.*query)(buffer);
        ASSERT_GT(length, 3u);
        ASSERT_LT(length, 260u);
        EXPECT_EQ(buffer[length], '\0');
        EXPECT_EQ(buffer[length + 1], ' ');
        const std::string directory = buffer.substr(0, length);
        buffer.assign(length, ' ');
        EXPECT_EQ((host.*query)(buffer), length + 1);
        buffer.assign(length + 1, ' ');
        EXPECT_EQ((host.*query)(buffer), length);
        EXPECT_EQ(buffer.substr(0, length), directory);
    }
}

}  // namespace
}  // namespace kwo::contract
