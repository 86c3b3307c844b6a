#include <cstdlib>
#include <string>

#include "registry_sandbox.h"

namespace kwo::com_test {
namespace {

class RegistryClass : public RegistrySandbox {
protected:
    long Status(const wchar_t* member, const std::vector<Var>& arguments) const {
        const Outcome outcome = Call(mRegistry.Get(), member, arguments);
        EXPECT_EQ(Hex(S_OK), Hex(outcome.status)) << Narrow(member);
        EXPECT_EQ(VT_I4, outcome.result.vt) << Narrow(member);
        return outcome.result.lVal;
    }
    long SetValue(const wchar_t* name, const std::wstring& value) const {
        return Status(L"KWO_RegSetValue", {kCurrentUser, kSandbox, name, value});
    }
    /// A key that the class opened, closed again.
    bool IsOpenKey(long handle) const {
        return RegCloseKey(reinterpret_cast<HKEY>(static_cast<std::intptr_t>(handle))) == ERROR_SUCCESS;
    }
};
using RegistryClassIntended = RegistryClass;

// Roots

TEST_F(RegistryClass, TakesARootInEveryFormThatScriptsHave) {
    PutText(L"there", L"found");
    Var currentUserUnsigned64;
    currentUserUnsigned64.vt = VT_UI8;
    currentUserUnsigned64.ullVal = 0x80000001ULL;
    for (const Var& root :
         {Var(kCurrentUser), Var::UnsignedLong(0x80000001), Var(0x80000001LL), Var(2147483649.0), Var(L"2147483649"),
          Var(L"-2147483647"), Var(-2147483647.0), Var(-2147483647LL), currentUserUnsigned64}) {
        std::wstring value;
        EXPECT_EQ(ERROR_SUCCESS, GetValue(root, kSandbox, L"there", &value)) << "type " << root.vt;
        EXPECT_EQ(L"found", value) << "type " << root.vt;
    }
}

TEST_F(RegistryClass, TakesAnOpenKeyAsRoot) {
    PutText(L"there", L"found");
    std::wstring value;

    EXPECT_EQ(ERROR_SUCCESS, GetValue(Handle(), L"", L"there", &value));
    EXPECT_EQ(L"found", value);
}

TEST_F(RegistryClass, AHandleThatIsNoneIsAStatus) {
    HKEY key = nullptr;
    ASSERT_EQ(ERROR_SUCCESS, RegOpenKeyExW(HKEY_CURRENT_USER, kSandbox, 0, KEY_READ, &key));
    const long closed = static_cast<long>(reinterpret_cast<std::intptr_t>(key));
    RegCloseKey(key);
    for (const long root : {0L, closed}) {
        std::wstring value;
        EXPECT_EQ(ERROR_INVALID_HANDLE, GetValue(root, L"x", L"y", &value));
        EXPECT_EQ(L"", value);
        EXPECT_EQ(ERROR_INVALID_HANDLE, Status(L"KWO_RegSetValue", {root, L"x", L"y", L"z"}));
        EXPECT_EQ(ERROR_INVALID_HANDLE, Status(L"KWO_RegDeleteKey", {root, L"x"}));
        EXPECT_EQ(ERROR_INVALID_HANDLE, Status(L"KWO_RegDeleteValue", {root, L"x", L"y"}));
    }
}

// KWO_RegSetValue

TEST_F(RegistryClass, SetValueStoresTextWithItsTerminatingZero) {
    DWORD type = 0;

    EXPECT_EQ(ERROR_SUCCESS, SetValue(L"name", L"value"));
    EXPECT_EQ(std::string("value\0", 6), StoredBytes(L"name", &type));
    EXPECT_EQ(static_cast<DWORD>(REG_SZ), type);
}

TEST_F(RegistryClass, SetValueCreatesTheWholePath) {
    EXPECT_EQ(ERROR_SUCCESS,
              Status(L"KWO_RegSetValue", {kCurrentUser, std::wstring(kSandbox) + L"\\a\\b\\c", L"n", L"v"}));
    EXPECT_TRUE(KeyExists(L"a\\b\\c"));
}

TEST_F(RegistryClass, SetValueReplacesAValueOfAnyType) {
    PutNumber(L"name", 5);
    DWORD type = 0;

    EXPECT_EQ(ERROR_SUCCESS, SetValue(L"name", L"text"));
    EXPECT_EQ(std::string("text\0", 5), StoredBytes(L"name", &type));
    EXPECT_EQ(static_cast<DWORD>(REG_SZ), type);
}

TEST_F(RegistryClass, SetValueWithAnEmptyNameIsTheKeysOwnValue) {
    EXPECT_EQ(ERROR_SUCCESS, SetValue(L"", L"own"));
    EXPECT_EQ(std::string("own\0", 4), StoredBytes(L""));
}

TEST_F(RegistryClass, SetValueStoresLongTextWhole) {
    const std::wstring text(5000, L'x');

    EXPECT_EQ(ERROR_SUCCESS, SetValue(L"long", text));
    EXPECT_EQ(5001u, StoredBytes(L"long").size());
}

TEST_F(RegistryClass, SetValueThroughANumberStoresItsText) {
    EXPECT_EQ(ERROR_SUCCESS, Status(L"KWO_RegSetValue", {kCurrentUser, kSandbox, L"number", 17}));
    EXPECT_EQ(std::string("17\0", 3), StoredBytes(L"number"));
}

TEST_F(RegistryClassIntended, SetValueStoresABlankInsteadOfEmptyText) {
    EXPECT_EQ(ERROR_SUCCESS, SetValue(L"empty", L""));
    // One would expect "".
    EXPECT_EQ(std::string(" \0", 2), StoredBytes(L"empty"));
}

TEST_F(RegistryClass, EmptyTextComesBackEmpty) {
    EXPECT_EQ(ERROR_SUCCESS, SetValue(L"empty", L""));
    EXPECT_EQ(L"", TextOf(L"empty"));
}

// KWO_RegGetValue

TEST_F(RegistryClass, GetValueReadsText) {
    PutText(L"name", L"some text");

    EXPECT_EQ(L"some text", TextOf(L"name"));
}

TEST_F(RegistryClass, GetValueDropsTrailingBlanksOnly) {
    PutText(L"name", L"  a b  ");

    EXPECT_EQ(L"  a b", TextOf(L"name"));
}

TEST_F(RegistryClass, GetValueReadsTextStoredWithoutATerminatingZero) {
    RegSetValueExA(mKey, "name", 0, REG_SZ, reinterpret_cast<const BYTE*>("abc"), 3);

    EXPECT_EQ(L"abc", TextOf(L"name"));
}

TEST_F(RegistryClass, GetValueOfAMissingValueIsStatusTwoAndEmptyText) {
    std::wstring value;

    EXPECT_EQ(ERROR_FILE_NOT_FOUND, GetValue(kCurrentUser, kSandbox, L"missing", &value));
    EXPECT_EQ(L"", value);
}

TEST_F(RegistryClass, GetValueOfAMissingKeyIsStatusTwoAndEmptyText) {
    std::wstring value;

    EXPECT_EQ(ERROR_FILE_NOT_FOUND, GetValue(kCurrentUser, L"Software\\KWOUtilComTest\\missing", L"x", &value));
    EXPECT_EQ(L"", value);
}

TEST_F(RegistryClass, GetValueReadsUpToTheBufferAndNoFurther) {
    std::wstring value;
    // 1024 bytes with the terminating zero are the most that fit.
    PutText(L"fits", std::wstring(1023, L'x'));
    PutText(L"long", std::wstring(1024, L'x'));

    EXPECT_EQ(ERROR_SUCCESS, GetValue(kCurrentUser, kSandbox, L"fits", &value));
    EXPECT_EQ(std::wstring(1023, L'x'), value);
    EXPECT_EQ(ERROR_MORE_DATA, GetValue(kCurrentUser, kSandbox, L"long", &value));
    EXPECT_EQ(L"", value);
}

TEST_F(RegistryClass, GetValueReadsNumbersWhoseBytesHaveTwoDigits) {
    PutNumber(L"255", 255);
    PutNumber(L"all", 0x12345678);
    PutNumber(L"word", 0xABCD);

    EXPECT_EQ(L"255", TextOf(L"255"));
    EXPECT_EQ(L"305419896", TextOf(L"all"));
    EXPECT_EQ(L"43981", TextOf(L"word"));
}

TEST_F(RegistryClassIntended, GetValueLosesTheLeadingZeroOfANumbersBytes) {
    PutNumber(L"66051", 66051);
    PutNumber(L"261", 261);

    // One would expect 66051 and 261.
    EXPECT_EQ(L"291", TextOf(L"66051"));
    EXPECT_EQ(L"21", TextOf(L"261"));
}

TEST_F(RegistryClassIntended, GetValueLosesAHighByteThatLooksLikeABlank) {
    PutNumber(L"blank", 0x20414243);

    // One would expect 541147715; the byte 0x20 goes as a trailing blank.
    EXPECT_EQ(std::to_wstring(0x414243), TextOf(L"blank"));
}

TEST_F(RegistryClass, GetValueOfOtherTypesIsEmptyText) {
    const BYTE bytes[] = {1, 2, 3};
    Put(L"binary", REG_BINARY, bytes, sizeof bytes);
    Put(L"expand", REG_EXPAND_SZ, L"%PATH%", 14);
    Put(L"multi", REG_MULTI_SZ, L"a\0b\0", 10);
    const std::uint64_t number = 5;
    Put(L"quad", REG_QWORD, &number, sizeof number);
    Put(L"none", REG_NONE, nullptr, 0);

    for (const wchar_t* name : {L"binary", L"expand", L"multi", L"quad", L"none"}) {
        std::wstring value;
        EXPECT_EQ(ERROR_SUCCESS, GetValue(kCurrentUser, kSandbox, name, &value)) << Narrow(name);
        EXPECT_EQ(L"", value) << Narrow(name);
    }
}

TEST_F(RegistryClass, TextOfTheUsersCodePageGoesInAndOut) {
    // Written and read through the same code page, so a character that it has must survive.
    const std::wstring text = L"caf\x00E9";
    char ansi[8] = {};
    BOOL lost = FALSE;
    WideCharToMultiByte(CP_ACP, WC_NO_BEST_FIT_CHARS, text.c_str(), -1, ansi, sizeof ansi, nullptr, &lost);
    if (lost != FALSE) GTEST_SKIP() << "the code page has no such character";

    EXPECT_EQ(ERROR_SUCCESS, SetValue(L"accent", text));
    EXPECT_EQ(text, TextOf(L"accent"));
}

TEST_F(RegistryClass, TextOfAMultiByteCodePageIsStoredWhole) {
    const char* const wanted = std::getenv("KWO_CODE_PAGE");
    if (wanted != nullptr) {
        ASSERT_EQ(wanted, std::to_string(GetACP())) << "the code page that the environment asks for";
    }
    CPINFO page = {};
    ASSERT_TRUE(GetCPInfo(CP_ACP, &page));
    if (page.MaxCharSize < 2) GTEST_SKIP() << "every character of the code page " << GetACP() << " is one byte";
    for (const std::wstring& text :
         {std::wstring(L"\x65E5\x672C\x8A9E"), std::wstring(L"a\x65E5"), std::wstring(100, L'\x672C')}) {
        EXPECT_EQ(ERROR_SUCCESS, SetValue(L"wide", text));
        EXPECT_EQ(text, TextOf(L"wide"));
        EXPECT_EQ(text, GetValueEx(L"wide", L"default").Text());
        EXPECT_EQ('\0', StoredBytes(L"wide").back());
    }
}

// KWO_RegDeleteValue, KWO_RegDeleteKey

TEST_F(RegistryClass, DeleteValueRemovesTheValue) {
    PutText(L"name", L"x");
    PutText(L"other", L"x");

    EXPECT_EQ(ERROR_SUCCESS, Status(L"KWO_RegDeleteValue", {kCurrentUser, kSandbox, L"name"}));
    EXPECT_EQ("", StoredBytes(L"name"));
    EXPECT_NE("", StoredBytes(L"other"));
    EXPECT_EQ(ERROR_FILE_NOT_FOUND, Status(L"KWO_RegDeleteValue", {kCurrentUser, kSandbox, L"name"}));
}

TEST_F(RegistryClass, DeleteValueOfAMissingKeyIsStatusTwo) {
    EXPECT_EQ(ERROR_FILE_NOT_FOUND,
              Status(L"KWO_RegDeleteValue", {kCurrentUser, L"Software\\KWOUtilComTest\\missing", L"name"}));
    EXPECT_FALSE(KeyExists(L"missing"));
}

TEST_F(RegistryClass, DeleteKeyRemovesTheKey) {
    EXPECT_EQ(ERROR_SUCCESS, Status(L"KWO_RegSetValue", {Handle(), L"gone", L"n", L"v"}));
    ASSERT_TRUE(KeyExists(L"gone"));

    EXPECT_EQ(ERROR_SUCCESS, Status(L"KWO_RegDeleteKey", {Handle(), L"gone"}));
    EXPECT_FALSE(KeyExists(L"gone"));
    EXPECT_EQ(ERROR_FILE_NOT_FOUND, Status(L"KWO_RegDeleteKey", {Handle(), L"gone"}));
}

TEST_F(RegistryClass, DeleteKeyLeavesAKeyThatHasSubkeys) {
    EXPECT_EQ(ERROR_SUCCESS, Status(L"KWO_RegSetValue", {Handle(), L"parent\\child", L"n", L"v"}));

    EXPECT_NE(ERROR_SUCCESS, Status(L"KWO_RegDeleteKey", {Handle(), L"parent"}));
    EXPECT_TRUE(KeyExists(L"parent\\child"));
}

// KWO_RegCreateKey

TEST_F(RegistryClass, CreateKeyGivesAnOpenKey) {
    const long handle = Status(L"KWO_RegCreateKey", {Handle(), L"made\\below"});

    EXPECT_NE(0, handle);
    EXPECT_TRUE(KeyExists(L"made\\below"));
    EXPECT_EQ(ERROR_SUCCESS, Status(L"KWO_RegSetValue", {handle, L"", L"n", L"v"}));
    std::wstring value;
    EXPECT_EQ(ERROR_SUCCESS, GetValue(Handle(), L"made\\below", L"n", &value));
    EXPECT_EQ(L"v", value);
    EXPECT_TRUE(IsOpenKey(handle));
}

TEST_F(RegistryClass, CreateKeyOpensAnExistingKeyWithWhatIsInIt) {
    PutText(L"there", L"kept");
    const long handle = Status(L"KWO_RegCreateKey", {kCurrentUser, kSandbox});

    EXPECT_EQ(std::string("kept\0", 5), StoredBytes(L"there"));
    EXPECT_TRUE(IsOpenKey(handle));
}

TEST_F(RegistryClass, CreateKeyThatFailsGivesZeroAtFirst) {
    EXPECT_EQ(0, Status(L"KWO_RegCreateKey", {0, L"x"}));
}

TEST_F(RegistryClassIntended, CreateKeyThatFailsGivesTheHandleOfTheCallBefore) {
    const long handle = Status(L"KWO_RegCreateKey", {Handle(), L"made"});
    ASSERT_NE(0, handle);

    // One would expect 0.
    EXPECT_EQ(handle, Status(L"KWO_RegCreateKey", {0, L"x"}));
    EXPECT_TRUE(IsOpenKey(handle));
}

TEST_F(RegistryClass, TwoObjectsDoNotShareTheirHandle) {
    const long handle = Status(L"KWO_RegCreateKey", {Handle(), L"made"});
    const ComPtr<IDispatch> other = Create(L"KWORegistry");
    ASSERT_TRUE(other);

    EXPECT_EQ(0, Call(other.Get(), L"KWO_RegCreateKey", {0, L"x"}).result.lVal);
    EXPECT_TRUE(IsOpenKey(handle));
}

// KWO_RegGetValueEx

TEST_F(RegistryClass, GetValueExReadsTextForATextDefault) {
    PutText(L"name", L"some text  ");

    const Var value = GetValueEx(L"name", L"default");
    EXPECT_EQ(L"some text", value.Text());
}

TEST_F(RegistryClass, GetValueExReadsTextOfAnyLength) {
    for (const std::size_t length : {0u, 1u, 258u, 259u, 260u, 261u, 1024u, 5000u}) {
        PutText(L"name", std::wstring(length, L'x'));
        EXPECT_EQ(std::wstring(length, L'x'), GetValueEx(L"name", L"default").Text()) << length;
    }
}

TEST_F(RegistryClass, GetValueExCutsTextAtItsFirstZero) {
    Put(L"name", REG_SZ, L"ab\0cd", 12);

    EXPECT_EQ(L"ab", GetValueEx(L"name", L"default").Text());
}

TEST_F(RegistryClass, GetValueExGivesTheDefaultWhenNothingCanBeRead) {
    EXPECT_EQ(L"default", GetValueEx(L"missing", L"default").Text());
    EXPECT_EQ(7, GetValueEx(L"missing", 7).lVal);
    const Outcome closed = Call(mRegistry.Get(), L"KWO_RegGetValueEx", {0, L"x", L"default"});
    EXPECT_EQ(Hex(S_OK), Hex(closed.status));
    EXPECT_EQ(L"default", closed.result.Text());
}

TEST_F(RegistryClass, GetValueExReadsANumberInTheTypeOfTheDefault) {
    PutNumber(L"number", 200);
    Var byte;
    byte.vt = VT_UI1;
    Var single;
    single.vt = VT_R4;
    single.fltVal = 0;
    Var currency;
    currency.vt = VT_CY;

    const Var asByte = GetValueEx(L"number", byte);
    EXPECT_EQ(VT_UI1, asByte.vt);
    EXPECT_EQ(200, asByte.bVal);
    const Var asShort = GetValueEx(L"number", static_cast<short>(0));
    EXPECT_EQ(VT_I2, asShort.vt);
    EXPECT_EQ(200, asShort.iVal);
    const Var asLong = GetValueEx(L"number", 0);
    EXPECT_EQ(VT_I4, asLong.vt);
    EXPECT_EQ(200, asLong.lVal);
    const Var asSingle = GetValueEx(L"number", single);
    EXPECT_EQ(VT_R4, asSingle.vt);
    EXPECT_EQ(200.0f, asSingle.fltVal);
    const Var asDouble = GetValueEx(L"number", 0.0);
    EXPECT_EQ(VT_R8, asDouble.vt);
    EXPECT_EQ(200.0, asDouble.dblVal);
    const Var asCurrency = GetValueEx(L"number", currency);
    EXPECT_EQ(VT_CY, asCurrency.vt);
    EXPECT_EQ(2000000, asCurrency.cyVal.int64);
    const Var asBoolean = GetValueEx(L"number", false);
    EXPECT_EQ(VT_BOOL, asBoolean.vt);
    EXPECT_EQ(VARIANT_TRUE, asBoolean.boolVal);
}

TEST_F(RegistryClass, GetValueExZeroIsFalse) {
    PutNumber(L"number", 0);

    EXPECT_EQ(VARIANT_FALSE, GetValueEx(L"number", true).boolVal);
}

TEST_F(RegistryClass, GetValueExReadsLargeNumbersAsSigned) {
    PutNumber(L"number", 0xFFFFFFFF);

    EXPECT_EQ(-1, GetValueEx(L"number", 0).lVal);
    EXPECT_EQ(-1.0, GetValueEx(L"number", 0.0).dblVal);
    EXPECT_EQ(-1, GetValueEx(L"number", static_cast<short>(0)).iVal);
}

TEST_F(RegistryClass, GetValueExDoesNotRaiseWhenTheNumberDoesNotFit) {
    Var byte;
    byte.vt = VT_UI1;
    byte.bVal = 9;
    for (const DWORD number : {32768u, 0xFFFF7FFFu}) {
        PutNumber(L"number", number);
        EXPECT_EQ(
            Hex(S_OK),
            Hex(Call(mRegistry.Get(), L"KWO_RegGetValueEx", {Handle(), L"number", static_cast<short>(9)}).status));
    }
    PutNumber(L"number", 256);
    EXPECT_EQ(Hex(S_OK), Hex(Call(mRegistry.Get(), L"KWO_RegGetValueEx", {Handle(), L"number", byte}).status));
    for (const DWORD number : {32767u, 0xFFFF8000u}) {
        PutNumber(L"number", number);
        EXPECT_EQ(static_cast<short>(number), GetValueEx(L"number", static_cast<short>(9)).iVal);
    }
}

TEST_F(RegistryClass, GetValueExGivesTheDefaultForTextWhereANumberIsWanted) {
    PutText(L"text", L"longer than four bytes");

    EXPECT_EQ(7, GetValueEx(L"text", 7).lVal);
}

TEST_F(RegistryClass, GetValueExReadsDates) {
    PutText(L"date", L"2004-03-05");

    const Var date = GetValueEx(L"date", Var::Date(1));
    EXPECT_EQ(VT_DATE, date.vt);
    EXPECT_EQ(38051.0, date.date);
}

TEST_F(RegistryClass, GetValueExReadsZeroAsTheFirstDate) {
    PutText(L"date", L"0");

    const Var date = GetValueEx(L"date", Var::Date(1));
    EXPECT_EQ(VT_DATE, date.vt);
    EXPECT_EQ(0.0, date.date);
}

TEST_F(RegistryClass, GetValueExGivesTheDefaultForTextThatIsNoDate) {
    for (const wchar_t* text : {L"no date", L"", L"00", L"32/32/32/32"}) {
        PutText(L"date", text);
        const Var date = GetValueEx(L"date", Var::Date(1.5));
        EXPECT_EQ(VT_DATE, date.vt) << Narrow(text);
        EXPECT_EQ(1.5, date.date) << Narrow(text);
    }
}

TEST_F(RegistryClass, GetValueExReturnsDefaultsOfOtherTypesAsTheyAre) {
    PutNumber(L"number", 5);
    Probe probe;
    Var decimal;
    decimal.vt = VT_DECIMAL;
    decimal.decVal.Lo64 = 12;
    decimal.vt = VT_DECIMAL;
    {
        const Var object = GetValueEx(L"number", static_cast<IDispatch*>(&probe));
        EXPECT_EQ(VT_DISPATCH, object.vt);
        EXPECT_EQ(&probe, object.pdispVal);
    }
    EXPECT_EQ(0u, probe.references);
    EXPECT_EQ(VT_EMPTY, GetValueEx(L"number", Var()).vt);
    EXPECT_EQ(VT_NULL, GetValueEx(L"number", Var::Null()).vt);
    EXPECT_EQ(VT_DECIMAL, GetValueEx(L"number", decimal).vt);
    Var array;
    array.vt = VT_ARRAY | VT_I4;
    array.parray = SafeArrayCreateVector(VT_I4, 3, 2);
    const Var copy = GetValueEx(L"number", array);
    EXPECT_EQ(VT_ARRAY | VT_I4, copy.vt);
    EXPECT_NE(array.parray, copy.parray);
    LONG lower = 0;
    EXPECT_EQ(Hex(S_OK), Hex(SafeArrayGetLBound(copy.parray, 1, &lower)));
    EXPECT_EQ(3, lower);
}

TEST_F(RegistryClass, GetValueExReturnsErrorValuesAsTheVeryNumber) {
    PutNumber(L"number", 5);
    for (const SCODE code : {SCODE{0}, SCODE{5}, SCODE{0xFFFF}, SCODE{0x10000}, SCODE{-5},
                             static_cast<SCODE>(0x800A0005), static_cast<SCODE>(0x800A0000), E_FAIL}) {
        const Var value = GetValueEx(L"number", Var::Error(code));
        EXPECT_EQ(VT_ERROR, value.vt);
        EXPECT_EQ(Hex(code), Hex(value.scode));
    }
}

TEST_F(RegistryClass, GetValueExReturnsDefaultsOfEveryTypeAsTheyAre) {
    Probe probe;
    {
        Var unknown(static_cast<IDispatch*>(&probe));
        unknown.vt = VT_UNKNOWN;
        const Var object = GetValueEx(L"none", unknown);
        EXPECT_EQ(VT_UNKNOWN, object.vt);
        EXPECT_EQ(static_cast<IUnknown*>(&probe), object.punkVal);
    }
    EXPECT_EQ(0u, probe.references);
    Var nothing;
    nothing.vt = VT_UNKNOWN;
    EXPECT_EQ(VT_UNKNOWN, GetValueEx(L"none", nothing).vt);
    Var oddBoolean(true);
    oddBoolean.boolVal = 5;
    EXPECT_EQ(5, GetValueEx(L"none", oddBoolean).boolVal);
    EXPECT_EQ(VT_UI4, GetValueEx(L"none", Var::UnsignedLong(7)).vt);
}

TEST_F(RegistryClass, GetValueExTakesAVariableAsDefault) {
    Var fallback(L"default");
    Bstr text(L"other");
    PutText(L"name", L"stored");

    EXPECT_EQ(L"stored", GetValueEx(L"name", Var::Ref(&fallback)).Text());
    EXPECT_EQ(L"default", GetValueEx(L"none", Var::Ref(&fallback)).Text());
    EXPECT_EQ(L"other", GetValueEx(L"none", Var::Ref(text.InOut())).Text());
    EXPECT_EQ(L"default", fallback.Text());
}

TEST_F(RegistryClass, GetValueExLeavesTheKeyOpen) {
    GetValueEx(L"none", L"x");

    DWORD count = 0;
    EXPECT_EQ(ERROR_SUCCESS, RegQueryInfoKeyW(mKey, nullptr, nullptr, nullptr, nullptr, nullptr, nullptr, &count,
                                              nullptr, nullptr, nullptr, nullptr));
}

TEST_F(RegistryClass, StrangeNamesGoInAndOut) {
    for (const wchar_t* name : {L"with blank", L"a.b", L"!\"$%&/()=?", L"{guid}", L"tab\there", L"back\\slash"}) {
        EXPECT_EQ(ERROR_SUCCESS, SetValue(name, L"v")) << Narrow(name);
        EXPECT_EQ(L"v", TextOf(name)) << Narrow(name);
    }
}

TEST_F(RegistryClass, NoKeyHandleIsLeftBehind) {
    const auto call = [this] {
        SetValue(L"name", L"value");
        std::wstring value;
        GetValue(kCurrentUser, kSandbox, L"name", &value);
        GetValue(kCurrentUser, kSandbox, L"missing", &value);
        Status(L"KWO_RegDeleteValue", {kCurrentUser, kSandbox, L"missing"});
    };
    call();
    // Handles are reused lowest first: a leak would push the next one up.
    HKEY before = nullptr;
    RegOpenKeyExW(HKEY_CURRENT_USER, kSandbox, 0, KEY_READ, &before);
    RegCloseKey(before);
    for (int i = 0; i < 50; ++i)
        call();
    HKEY after = nullptr;
    RegOpenKeyExW(HKEY_CURRENT_USER, kSandbox, 0, KEY_READ, &after);
    RegCloseKey(after);

    EXPECT_EQ(before, after);
}

}  // namespace
}  // namespace kwo::com_test
