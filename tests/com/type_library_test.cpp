#include "type_library_dump.h"

#include <algorithm>

#include "dll_under_test.h"

namespace kwo::com_test {
namespace {

std::string Joined(const std::vector<std::string>& lines) {
    std::string text;
    for (const std::string& line : lines)
        text += line + '\n';
    return text;
}

/// Says each line that differs, not the two lists as a whole.
void ExpectSameLines(const std::vector<std::string>& expected, const std::vector<std::string>& found,
                     const std::string& where) {
    for (std::size_t i = 0; i < std::max(expected.size(), found.size()); ++i) {
        const std::string listed = i < expected.size() ? expected[i] : "(nothing)";
        const std::string dumped = i < found.size() ? found[i] : "(nothing)";
        if (listed != dumped) {
            ADD_FAILURE() << where << ", row " << i << "\n  the list: " << listed << "\n  the DLL:  " << dumped;
        }
    }
}

std::wstring Wide(const char* ascii) {
    return std::wstring(ascii, ascii + std::char_traits<char>::length(ascii));
}

class TypeLibrary : public ::testing::Test {
protected:
    void SetUp() override {
        mLibrary = TypeLibraryOfTheDll();
        ASSERT_TRUE(mLibrary);
    }

    std::vector<std::string> NamesOfKind(TYPEKIND kind) const {
        std::vector<std::string> names;
        for (UINT i = 0; i < mLibrary->GetTypeInfoCount(); ++i) {
            TYPEKIND found = TKIND_MAX;
            ComPtr<ITypeInfo> info;
            if (FAILED(mLibrary->GetTypeInfoType(i, &found)) || found != kind) continue;
            if (SUCCEEDED(mLibrary->GetTypeInfo(i, info.Out()))) names.push_back(NameOf(info.Get()));
        }
        std::sort(names.begin(), names.end());
        return names;
    }

    ComPtr<ITypeLib> mLibrary;
};

TEST_F(TypeLibrary, NameVersionAndHelpOfTheLibraryEqualTheList) {
    Bstr name;
    Bstr help;
    ASSERT_EQ(Hex(mLibrary->GetDocumentation(-1, name.Out(), help.Out(), nullptr, nullptr)), Hex(S_OK));
    const com_support::LibraryAttributes attributes(*mLibrary.Get());
    ASSERT_EQ(Hex(attributes.Status()), Hex(S_OK));

    EXPECT_EQ(Narrow(name.Text()), Golden().name);
    EXPECT_EQ(Narrow(help.Text()), Golden().help);
    EXPECT_EQ(attributes->wMajorVerNum, Golden().majorVersion);
    EXPECT_EQ(attributes->wMinorVerNum, Golden().minorVersion);
    EXPECT_EQ(attributes->syskind, sizeof(void*) == 8 ? SYS_WIN64 : SYS_WIN32);
}

TEST_F(TypeLibrary, InTheDllEqualsTheList) {
    for (const GoldenInterface& expected : Golden().interfaces) {
        std::vector<std::string> lines;
        for (const GoldenMember& member : expected.members)
            lines.push_back(Line(member));
        const ComPtr<ITypeInfo> info = TypeInfoOf(mLibrary.Get(), Wide(expected.name));

        ASSERT_TRUE(info) << expected.name;
        ExpectSameLines(lines, DumpInterface(info.Get()), expected.name);
    }
}

TEST_F(TypeLibrary, EventsEqualTheList) {
    for (const GoldenInterface& expected : Golden().eventInterfaces) {
        std::vector<std::string> lines;
        for (const GoldenMember& member : expected.members)
            lines.push_back(Line(member));
        const ComPtr<ITypeInfo> info = TypeInfoOf(mLibrary.Get(), Wide(expected.name));

        ASSERT_TRUE(info) << expected.name;
        ExpectSameLines(lines, DumpEvents(info.Get()), expected.name);
    }
}

TEST_F(TypeLibrary, EnumerationsEqualTheList) {
    for (const GoldenEnumeration& expected : Golden().enumerations) {
        std::vector<std::string> lines;
        for (const auto& [name, value] : expected.values)
            lines.push_back(name + (" = " + std::to_string(value)));
        const ComPtr<ITypeInfo> info = TypeInfoOf(mLibrary.Get(), Wide(expected.name));

        ASSERT_TRUE(info) << expected.name;
        ExpectSameLines(lines, DumpEnumeration(info.Get()), expected.name);
    }
}

TEST_F(TypeLibrary, ClassesEqualTheList) {
    for (const GoldenClass& expected : Golden().classes) {
        std::string line = std::string(expected.name) + " creatable default " + expected.defaultInterface;
        if (*expected.sourceInterface != '\0') line += std::string(" default source ") + expected.sourceInterface;
        const ComPtr<ITypeInfo> info = TypeInfoOf(mLibrary.Get(), Wide(expected.name));

        ASSERT_TRUE(info) << expected.name;
        EXPECT_EQ(DumpClass(info.Get()), line);
    }
}

TEST_F(TypeLibrary, HoldsNothingThatTheListDoesNotName) {
    std::vector<std::string> dispatch;
    std::vector<std::string> enumerations;
    std::vector<std::string> classes;
    for (const GoldenInterface& one : Golden().interfaces)
        dispatch.push_back(one.name);
    for (const GoldenInterface& one : Golden().eventInterfaces)
        dispatch.push_back(one.name);
    for (const GoldenEnumeration& one : Golden().enumerations)
        enumerations.push_back(one.name);
    for (const GoldenClass& one : Golden().classes)
        classes.push_back(one.name);
    std::sort(dispatch.begin(), dispatch.end());
    std::sort(enumerations.begin(), enumerations.end());
    std::sort(classes.begin(), classes.end());

    EXPECT_EQ(Joined(NamesOfKind(TKIND_DISPATCH)), Joined(dispatch));
    EXPECT_EQ(Joined(NamesOfKind(TKIND_ENUM)), Joined(enumerations));
    EXPECT_EQ(Joined(NamesOfKind(TKIND_COCLASS)), Joined(classes));
    EXPECT_EQ(Joined(NamesOfKind(TKIND_MODULE)), "");
    EXPECT_EQ(Joined(NamesOfKind(TKIND_RECORD)), "");
}

TEST_F(TypeLibrary, DefaultInterfacesAreDualAndAutomationCompatible) {
    for (const GoldenInterface& expected : Golden().interfaces) {
        const ComPtr<ITypeInfo> info = TypeInfoOf(mLibrary.Get(), Wide(expected.name));
        ASSERT_TRUE(info) << expected.name;
        const ComPtr<ITypeInfo> slots = SlotView(info.Get());
        ASSERT_TRUE(slots) << expected.name;
        const TypeAttributes attributes(*slots);

        EXPECT_NE(attributes->wTypeFlags & TYPEFLAG_FDUAL, 0) << expected.name;
        EXPECT_NE(attributes->wTypeFlags & TYPEFLAG_FOLEAUTOMATION, 0) << expected.name;
    }
}

TEST_F(TypeLibrary, SlotsFollowThoseOfDispatchWithoutGaps) {
    for (const GoldenInterface& expected : Golden().interfaces) {
        const ComPtr<ITypeInfo> info = TypeInfoOf(mLibrary.Get(), Wide(expected.name));
        ASSERT_TRUE(info) << expected.name;
        const ComPtr<ITypeInfo> slots = SlotView(info.Get());
        ASSERT_TRUE(slots) << expected.name;
        for (UINT i = 0; i < expected.members.size(); ++i) {
            const Function function(slots.Get(), i);
            EXPECT_EQ(function->oVft, static_cast<int>((7 + i) * sizeof(void*))) << expected.name << " slot " << i;
        }
    }
}

// Compiled clients hold these: a changed identifier is a broken client.
constexpr std::pair<const wchar_t*, const wchar_t*> kIdentifiers[] = {
    {L"TimerEventTypes", L"{81DA213E-06EF-4281-91D9-B730B7C2305D}"},
    {L"TimerErrors", L"{7DA2BACD-DDC4-407E-ADDE-FFF98867BBC7}"},
    {L"_KWORegistry", L"{CB65FC9F-103D-4546-BE63-7A30294D7D09}"},
    {L"_KWOUtility", L"{1F3E630D-962B-4268-B91B-87CA33C8144B}"},
    {L"_KWOSplitterV", L"{F178D967-81AB-4852-9862-B067B822B666}"},
    {L"_KWOPicBtn", L"{645B2C4A-6363-484B-B514-36C7CAD89E82}"},
    {L"_KWOSysParams", L"{F06BA428-F8DA-4550-8024-FCD0EE73BB6C}"},
    {L"_KWOSysTray", L"{9A2865A9-44AC-4727-AE09-B555F2963E33}"},
    {L"_KWOSysMetrics", L"{11C91841-7ABB-410E-95DC-63FDF5E8C2A3}"},
    {L"_KWOMonthView", L"{12E38885-6620-4164-80A7-9FBE6558ECFE}"},
    {L"_KWOTimer", L"{7918413F-BDD0-4E96-91A4-E6487C60855E}"},
    {L"_IKWOTimer", L"{2B689CAF-897A-421A-BACE-1960F1CD8B70}"},
    {L"_IKWOAlarm", L"{A85E49B4-E56E-41C5-BE4F-F54EE3D75EFA}"},
    {L"__KWOTimer", L"{A4F1EC6C-779D-4BD2-A29E-873ACAEEF042}"},
    {L"KWORegistry", L"{010FA79D-6CEA-4AE3-AE51-3D3FE2A9EC7B}"},
    {L"KWOUtility", L"{9D2A4D26-4B62-49DB-AA70-57CD013D3C80}"},
    {L"KWOSplitterV", L"{818672D8-ED29-4F87-B676-0683DD64E31E}"},
    {L"KWOPicBtn", L"{066AF80D-6058-4452-9773-3618CC7338EF}"},
    {L"KWOSysParams", L"{F063100A-12E0-49AB-8DD9-DA3BA65361DD}"},
    {L"KWOSysTray", L"{D1D179CF-B0AA-4A65-9AFB-6B33B152F3D5}"},
    {L"KWOSysMetrics", L"{753BA11B-371B-40C7-8C87-77DBE68F47E1}"},
    {L"KWOMonthView", L"{BAB01996-649E-432E-AF83-1E82AF87916F}"},
    {L"KWOTimer", L"{97517F0F-B919-4AEC-8B56-276E39ACA8DB}"},
    {L"IKWOTimer", L"{6E43823C-1B98-4ABE-8A8B-37340C5EF410}"},
    {L"IKWOAlarm", L"{E5CB233C-0E46-4F2D-9CB0-177592BF203B}"},
};

std::wstring GuidText(REFGUID guid) {
    wchar_t text[40] = {};
    StringFromGUID2(guid, text, 40);
    return text;
}

TEST_F(TypeLibrary, IdentifiersNeverChange) {
    const com_support::LibraryAttributes library(*mLibrary.Get());
    ASSERT_EQ(Hex(library.Status()), Hex(S_OK));
    EXPECT_EQ(GuidText(library->guid), L"{548B7A79-6EC2-4190-8590-E39BA0B37159}");

    for (const auto& [name, identifier] : kIdentifiers) {
        const ComPtr<ITypeInfo> info = TypeInfoOf(mLibrary.Get(), name);
        ASSERT_TRUE(info) << Narrow(name);
        const TypeAttributes attributes(*info);
        EXPECT_EQ(GuidText(attributes->guid), identifier) << Narrow(name);
    }
}

}  // namespace
}  // namespace kwo::com_test
