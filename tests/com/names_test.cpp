#include "com_test.h"
#include "type_library_dump.h"

#include <algorithm>

namespace kwo::com_test {
namespace {

struct Found {
    HRESULT status;
    std::vector<DISPID> ids;
};

Found Find(IDispatch* object, const std::vector<const wchar_t*>& names, REFIID iid = IID_NULL) {
    std::vector<LPOLESTR> raw;
    for (const wchar_t* name : names)
        raw.push_back(const_cast<LPOLESTR>(name));
    Found found = {S_OK, std::vector<DISPID>(std::max<std::size_t>(names.size(), 1), 12345)};
    found.status =
        object->GetIDsOfNames(iid, raw.data(), static_cast<UINT>(raw.size()), LOCALE_USER_DEFAULT, found.ids.data());
    return found;
}

class Names : public ::testing::Test {
protected:
    void SetUp() override {
        mRegistry = Create(L"KWORegistry");
        ASSERT_TRUE(mRegistry);
    }
    ComPtr<IDispatch> mRegistry;
};

constexpr DISPID kSetValue = 0x60030024;

TEST_F(Names, AreFoundInAnyLetterCase) {
    for (const wchar_t* name : {L"KWO_RegSetValue", L"kwo_regsetvalue", L"KWO_REGSETVALUE", L"kWo_rEgSeTvAlUe"}) {
        const Found found = Find(mRegistry.Get(), {name});
        EXPECT_EQ(Hex(found.status), Hex(S_OK)) << Narrow(name);
        EXPECT_EQ(found.ids[0], kSetValue) << Narrow(name);
    }
}

TEST_F(Names, UnknownOnesAreUnknown) {
    const std::wstring longName(70000, L'a');
    for (const wchar_t* name :
         {L"", L" ", L"KWO_RegSetValu", L"KWO_RegSetValueE", L"KWO_RegSetValue ", L" KWO_RegSetValue", L"KeyRoot",
          L"KWO\x2011RegSetValue", L"\xFFFF", L"\xD800", L"\x0130WO_RegSetValue", L"\x212AWO_RegSetValue",
          L"\xFF2B\xFF37\xFF2F", L"QueryInterface", L"AddRef", L"Invoke", longName.c_str()}) {
        const Found found = Find(mRegistry.Get(), {name});
        EXPECT_EQ(Hex(found.status), Hex(DISP_E_UNKNOWNNAME)) << Narrow(name).substr(0, 40);
        EXPECT_EQ(found.ids[0], DISPID_UNKNOWN) << Narrow(name).substr(0, 40);
    }
}

TEST_F(Names, ArgumentsAreCountedFromZeroInAnyOrderAndCase) {
    const Found found =
        Find(mRegistry.Get(), {L"KWO_RegSetValue", L"Value", L"KEYROOT", L"valuename", L"KeyName", L"KeyRoot"});

    EXPECT_EQ(Hex(found.status), Hex(S_OK));
    EXPECT_EQ(found.ids, (std::vector<DISPID>{kSetValue, 3, 0, 2, 1, 0}));
}

TEST_F(Names, AnUnknownArgumentIsUnknownAndTheOthersAreStillFound) {
    const Found found = Find(mRegistry.Get(), {L"KWO_RegSetValue", L"KeyRoot", L"Nonsense", L"Value"});

    EXPECT_EQ(Hex(found.status), Hex(DISP_E_UNKNOWNNAME));
    EXPECT_EQ(found.ids, (std::vector<DISPID>{kSetValue, 0, DISPID_UNKNOWN, 3}));
}

TEST_F(Names, AnotherMembersArgumentIsUnknown) {
    const Found found = Find(mRegistry.Get(), {L"KWO_RegDeleteKey", L"ValueName"});

    EXPECT_EQ(Hex(found.status), Hex(DISP_E_UNKNOWNNAME));
    EXPECT_EQ(found.ids, (std::vector<DISPID>{0x6003001C, DISPID_UNKNOWN}));
}

TEST_F(Names, TheResultIsNoArgument) {
    const Found found = Find(mRegistry.Get(), {L"KWO_RegDeleteKey", L"Status"});

    EXPECT_EQ(Hex(found.status), Hex(DISP_E_UNKNOWNNAME));
    EXPECT_EQ(found.ids[1], DISPID_UNKNOWN);
}

TEST_F(Names, ArgumentsOfAnUnknownMemberAreAllUnknown) {
    const Found found = Find(mRegistry.Get(), {L"Nonsense", L"KeyRoot", L"KeyName"});

    EXPECT_EQ(Hex(found.status), Hex(DISP_E_UNKNOWNNAME));
    EXPECT_EQ(found.ids, std::vector<DISPID>(3, DISPID_UNKNOWN));
}

TEST_F(Names, AThousandAtOnceAreAnswered) {
    std::vector<const wchar_t*> names = {L"KWO_RegSetValue"};
    for (int i = 0; i < 1000; ++i)
        names.push_back(i % 2 == 0 ? L"Value" : L"Nonsense");

    const Found found = Find(mRegistry.Get(), names);

    EXPECT_EQ(Hex(found.status), Hex(DISP_E_UNKNOWNNAME));
    EXPECT_EQ(found.ids[0], kSetValue);
    EXPECT_EQ(std::count(found.ids.begin(), found.ids.end(), 3), 500);
    EXPECT_EQ(std::count(found.ids.begin(), found.ids.end(), DISPID_UNKNOWN), 500);
}

TEST_F(Names, TheInterfaceIdentifierMustBeNull) {
    EXPECT_EQ(Hex(Find(mRegistry.Get(), {L"KWO_RegSetValue"}, IID_IDispatch).status), Hex(DISP_E_UNKNOWNINTERFACE));
}

TEST_F(Names, NullPointersAreRefused) {
    LPOLESTR name = const_cast<LPOLESTR>(L"KWO_RegSetValue");
    LPOLESTR null = nullptr;
    DISPID id = 12345;

    EXPECT_TRUE(FAILED(mRegistry->GetIDsOfNames(IID_NULL, nullptr, 1, LOCALE_USER_DEFAULT, &id)));
    EXPECT_TRUE(FAILED(mRegistry->GetIDsOfNames(IID_NULL, &name, 1, LOCALE_USER_DEFAULT, nullptr)));
    EXPECT_TRUE(FAILED(mRegistry->GetIDsOfNames(IID_NULL, &null, 1, LOCALE_USER_DEFAULT, &id)));
}

TEST_F(Names, NoNamesAtAllTouchNothing) {
    LPOLESTR name = nullptr;
    DISPID id = 12345;

    mRegistry->GetIDsOfNames(IID_NULL, &name, 0, LOCALE_USER_DEFAULT, &id);
    mRegistry->GetIDsOfNames(IID_NULL, nullptr, 0, LOCALE_USER_DEFAULT, nullptr);

    EXPECT_EQ(id, 12345);
}

TEST_F(Names, EveryLocaleGivesTheSameNames) {
    LPOLESTR name = const_cast<LPOLESTR>(L"kwo_regdeletekey");
    for (const LCID locale : {0x0409u, 0x041Fu, 0x0407u, 0u, 0xFFFFu}) {
        DISPID id = DISPID_UNKNOWN;
        EXPECT_EQ(Hex(mRegistry->GetIDsOfNames(IID_NULL, &name, 1, locale, &id)), Hex(S_OK)) << locale;
        EXPECT_EQ(id, 0x6003001C) << locale;
    }
}

TEST(NamesOfEveryClass, AreThoseOfTheTypeLibrary) {
    const ComPtr<ITypeLib> library = TypeLibraryOfTheDll();
    ASSERT_TRUE(library);
    for (const std::wstring& className : ClassNames()) {
        const ComPtr<IDispatch> object = Create(className);
        const ComPtr<ITypeInfo> info = TypeInfoOf(library.Get(), L"_" + className);
        ASSERT_TRUE(object && info);
        const ComPtr<ITypeInfo> slots = SlotView(info.Get());
        ASSERT_TRUE(slots);
        for (UINT i = 0; i < TypeAttributes(*slots)->cFuncs; ++i) {
            const Function function(slots.Get(), i);
            const std::vector<std::string> names = function.Names();
            std::vector<std::wstring> wide;
            std::vector<const wchar_t*> raw;
            for (std::size_t n = 0; n <= function.ArgumentCount(); ++n)
                wide.emplace_back(names[n].begin(), names[n].end());
            for (const std::wstring& name : wide)
                raw.push_back(name.c_str());

            const Found found = Find(object.Get(), raw);

            EXPECT_EQ(Hex(found.status), Hex(S_OK)) << Narrow(className) << '.' << names[0];
            EXPECT_EQ(found.ids[0], function->memid) << Narrow(className) << '.' << names[0];
            for (std::size_t n = 1; n < raw.size(); ++n) {
                EXPECT_EQ(found.ids[n], static_cast<DISPID>(n - 1)) << Narrow(className) << '.' << names[0];
            }
        }
    }
}

}  // namespace
}  // namespace kwo::com_test
