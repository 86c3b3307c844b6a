#include <cstdlib>
#include <string>

#include "registry_sandbox.h"

namespace kwo::com_test {
namespace {

class RegistryClass : public RegistrySandbox {
protected:
    long Status(const wchar_t* member, const std::vector<Var>& arguments) const {
        const Outcome outcome = Call(mRegistry.Get(), member, arguments);
        EXPECT_EQ(Hex(outcome.status), Hex(S_OK)) << Narrow(member);
        EXPECT_EQ(outcome.result.vt, VT_I4) << Narrow(member);
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
        EXPECT_EQ(GetValue(root, kSandbox, L"there", &value), ERROR_SUCCESS) << "type " << root.vt;
        EXPECT_EQ(value, L"found") << "type " << root.vt;
    }
}

TEST_F(RegistryClass, TakesAnOpenKeyAsRoot) {
    PutText(L"there", L"found");
    std::wstring value;

    EXPECT_EQ(GetValue(Handle(), L"", L"there", &value), ERROR_SUCCESS);
    EXPECT_EQ(value, L"found");
}

TEST_F(RegistryClass, AHandleThatIsNoneIsAStatus) {
    HKEY key = nullptr;
    ASSERT_EQ(RegOpenKeyExW(HKEY_CURRENT_USER, kSandbox, 0, KEY_READ, &key), ERROR_SUCCESS);
    const long closed = static_cast<long>(reinterpret_cast<std::intptr_t>(key));
    RegCloseKey(key);
    for (const long root : {0L, closed}) {
        std::wstring value;
        EXPECT_EQ(GetValue(root, L"x", L"y", &value), ERROR_INVALID_HANDLE);
        EXPECT_EQ(value, L"");
        EXPECT_EQ(Status(L"KWO_RegSetValue", {root, L"x", L"y", L"z"}), ERROR_INVALID_HANDLE);
        EXPECT_EQ(Status(L"KWO_RegDeleteKey", {root, L"x"}), ERROR_INVALID_HANDLE);
        EXPECT_EQ(Status(L"KWO_RegDeleteValue", {root, L"x", L"y"}), ERROR_INVALID_HANDLE);
    }
}

// KWO_RegSetValue

TEST_F(RegistryClass, SetValueStoresTextWithItsTerminatingZero) {
    DWORD type = 0;

    EXPECT_EQ(SetValue(L"name", L"value"), ERROR_SUCCESS);
    EXPECT_EQ(StoredBytes(L"name", &type), std::string("value\0", 6));
    EXPECT_EQ(type, static_cast<DWORD>(REG_SZ));
}

TEST_F(RegistryClass, SetValueCreatesTheWholePath) {
    EXPECT_EQ(Status(L"KWO_RegSetValue", {kCurrentUser, std::wstring(kSandbox) + L"\\a\\b\\c", L"n", L"v"}),
              ERROR_SUCCESS);
    EXPECT_TRUE(KeyExists(L"a\\b\\c"));
}

TEST_F(RegistryClass, SetValueReplacesAValueOfAnyType) {
    PutNumber(L"name", 5);
    DWORD type = 0;

    EXPECT_EQ(SetValue(L"name", L"text"), ERROR_SUCCESS);
    EXPECT_EQ(StoredBytes(L"name", &type), std::string("text\0", 5));
    EXPECT_EQ(type, static_cast<DWORD>(REG_SZ));
}

TEST_F(RegistryClass, SetValueWithAnEmptyNameIsTheKeysOwnValue) {
    EXPECT_EQ(SetValue(L"", L"own"), ERROR_SUCCESS);
    EXPECT_EQ(StoredBytes(L""), std::string("own\0", 4));
}

TEST_F(RegistryClass, SetValueStoresLongTextWhole) {
    const std::wstring text(5000, L'x');

    EXPECT_EQ(SetValue(L"long", text), ERROR_SUCCESS);
    EXPECT_EQ(StoredBytes(L"long").size(), 5001u);
}

TEST_F(RegistryClass, SetValueThroughANumberStoresItsText) {
    EXPECT_EQ(Status(L"KWO_RegSetValue", {kCurrentUser, kSandbox, L"number", 17}), ERROR_SUCCESS);
    EXPECT_EQ(StoredBytes(L"number"), std::string("17\0", 3));
}

TEST_F(RegistryClassIntended, SetValueStoresABlankInsteadOfEmptyText) {
    EXPECT_EQ(SetValue(L"empty", L""), ERROR_SUCCESS);
    // One would expect "".
    EXPECT_EQ(StoredBytes(L"empty"), std::string(" \0", 2));
}

TEST_F(RegistryClass, EmptyTextComesBackEmpty) {
    EXPECT_EQ(SetValue(L"empty", L""), ERROR_SUCCESS);
    EXPECT_EQ(TextOf(L"empty"), L"");
}

// KWO_RegGetValue

TEST_F(RegistryClass, GetValueReadsText) {
    PutText(L"name", L"some text");

    EXPECT_EQ(TextOf(L"name"), L"some text");
}

TEST_F(RegistryClass, GetValueDropsTrailingBlanksOnly) {
    PutText(L"name", L"  a b  ");

    EXPECT_EQ(TextOf(L"name"), L"  a b");
}

TEST_F(RegistryClass, GetValueReadsTextStoredWithoutATerminatingZero) {
    RegSetValueExA(mKey, "name", 0, REG_SZ, reinterpret_cast<const BYTE*>("abc"), 3);

    EXPECT_EQ(TextOf(L"name"), L"abc");
}

TEST_F(RegistryClass, GetValueOfAMissingValueIsStatusTwoAndEmptyText) {
    std::wstring value;

    EXPECT_EQ(GetValue(kCurrentUser, kSandbox, L"missing", &value), ERROR_FILE_NOT_FOUND);
    EXPECT_EQ(value, L"");
}

TEST_F(RegistryClass, GetValueOfAMissingKeyIsStatusTwoAndEmptyText) {
    std::wstring value;

    EXPECT_EQ(GetValue(kCurrentUser, L"Software\\KWOUtilComTest\\missing", L"x", &value), ERROR_FILE_NOT_FOUND);
    EXPECT_EQ(value, L"");
}

TEST_F(RegistryClass, GetValueMakesATextOfWhateverTheVariableHeld) {
    PutText(L"five", L"5");
    for (const Var& before : {Var(), Var(5), Var(L""), Var(L"5")})
        for (const wchar_t* const name : {L"five", L"none"}) {
            Var variable = before;
            Status(L"KWO_RegGetValue", {kCurrentUser, kSandbox, name, Var::Ref(&variable)});
            ASSERT_EQ(variable.vt, VT_BSTR) << Narrow(name) << ", type " << before.vt;
            EXPECT_EQ(variable.Text(), name[0] == L'f' ? L"5" : L"") << "type " << before.vt;
        }
}

TEST_F(RegistryClass, GetValueReadsUpToTheBufferAndNoFurther) {
    std::wstring value;
    // 1024 bytes with the terminating zero are the most that fit.
    PutText(L"fits", std::wstring(1023, L'x'));
    PutText(L"long", std::wstring(1024, L'x'));

    EXPECT_EQ(GetValue(kCurrentUser, kSandbox, L"fits", &value), ERROR_SUCCESS);
    EXPECT_EQ(value, std::wstring(1023, L'x'));
    EXPECT_EQ(GetValue(kCurrentUser, kSandbox, L"long", &value), ERROR_MORE_DATA);
    EXPECT_EQ(value, L"");
}

TEST_F(RegistryClass, GetValueReadsNumbersWhoseBytesHaveTwoDigits) {
    PutNumber(L"255", 255);
    PutNumber(L"all", 0x12345678);
    PutNumber(L"word", 0xABCD);

    EXPECT_EQ(TextOf(L"255"), L"255");
    EXPECT_EQ(TextOf(L"all"), L"305419896");
    EXPECT_EQ(TextOf(L"word"), L"43981");
}

TEST_F(RegistryClassIntended, GetValueLosesTheLeadingZeroOfANumbersBytes) {
    PutNumber(L"66051", 66051);
    PutNumber(L"261", 261);

    // One would expect 66051 and 261.
    EXPECT_EQ(TextOf(L"66051"), L"291");
    EXPECT_EQ(TextOf(L"261"), L"21");
}

TEST_F(RegistryClassIntended, GetValueLosesAHighByteThatLooksLikeABlank) {
    PutNumber(L"blank", 0x20414243);

    // One would expect 541147715; the byte 0x20 goes as a trailing blank.
    EXPECT_EQ(TextOf(L"blank"), std::to_wstring(0x414243));
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
        EXPECT_EQ(GetValue(kCurrentUser, kSandbox, name, &value), ERROR_SUCCESS) << Narrow(name);
        EXPECT_EQ(value, L"") << Narrow(name);
    }
}

TEST_F(RegistryClass, TextOfTheUsersCodePageGoesInAndOut) {
    // Written and read through the same code page, so a character that it has must survive.
    const std::wstring text = L"caf\x00E9";
    char ansi[8] = {};
    BOOL lost = FALSE;
    WideCharToMultiByte(CP_ACP, WC_NO_BEST_FIT_CHARS, text.c_str(), -1, ansi, sizeof ansi, nullptr, &lost);
    if (lost != FALSE) GTEST_SKIP() << "the code page has no such character";

    EXPECT_EQ(SetValue(L"accent", text), ERROR_SUCCESS);
    EXPECT_EQ(TextOf(L"accent"), text);
}

TEST_F(RegistryClass, TextOfAMultiByteCodePageIsStoredWhole) {
    const char* const wanted = std::getenv("KWO_CODE_PAGE");
    if (wanted != nullptr) {
        ASSERT_EQ(std::to_string(GetACP()), wanted) << "the code page that the environment asks for";
    }
    CPINFO page = {};
    ASSERT_TRUE(GetCPInfo(CP_ACP, &page));
    if (page.MaxCharSize < 2) GTEST_SKIP() << "every character of the code page " << GetACP() << " is one byte";
    for (const std::wstring& text :
         {std::wstring(L"\x65E5\x672C\x8A9E"), std::wstring(L"a\x65E5"), std::wstring(100, L'\x672C')}) {
        EXPECT_EQ(SetValue(L"wide", text), ERROR_SUCCESS);
        EXPECT_EQ(TextOf(L"wide"), text);
        EXPECT_EQ(GetValueEx(L"wide", L"default").Text(), text);
        EXPECT_EQ(StoredBytes(L"wide").back(), '\0');
    }
}

// KWO_RegDeleteValue, KWO_RegDeleteKey

TEST_F(RegistryClass, DeleteValueRemovesTheValue) {
    PutText(L"name", L"x");
    PutText(L"other", L"x");

    EXPECT_EQ(Status(L"KWO_RegDeleteValue", {kCurrentUser, kSandbox, L"name"}), ERROR_SUCCESS);
    EXPECT_EQ(StoredBytes(L"name"), "");
    EXPECT_NE(StoredBytes(L"other"), "");
    EXPECT_EQ(Status(L"KWO_RegDeleteValue", {kCurrentUser, kSandbox, L"name"}), ERROR_FILE_NOT_FOUND);
}

TEST_F(RegistryClass, DeleteValueOfAMissingKeyIsStatusTwo) {
    EXPECT_EQ(Status(L"KWO_RegDeleteValue", {kCurrentUser, L"Software\\KWOUtilComTest\\missing", L"name"}),
              ERROR_FILE_NOT_FOUND);
    EXPECT_FALSE(KeyExists(L"missing"));
}

TEST_F(RegistryClass, DeleteKeyRemovesTheKey) {
    EXPECT_EQ(Status(L"KWO_RegSetValue", {Handle(), L"gone", L"n", L"v"}), ERROR_SUCCESS);
    ASSERT_TRUE(KeyExists(L"gone"));

    EXPECT_EQ(Status(L"KWO_RegDeleteKey", {Handle(), L"gone"}), ERROR_SUCCESS);
    EXPECT_FALSE(KeyExists(L"gone"));
    EXPECT_EQ(Status(L"KWO_RegDeleteKey", {Handle(), L"gone"}), ERROR_FILE_NOT_FOUND);
}

TEST_F(RegistryClass, DeleteKeyLeavesAKeyThatHasSubkeys) {
    EXPECT_EQ(Status(L"KWO_RegSetValue", {Handle(), L"parent\\child", L"n", L"v"}), ERROR_SUCCESS);

    EXPECT_NE(Status(L"KWO_RegDeleteKey", {Handle(), L"parent"}), ERROR_SUCCESS);
    EXPECT_TRUE(KeyExists(L"parent\\child"));
}

// KWO_RegCreateKey

TEST_F(RegistryClass, CreateKeyGivesAnOpenKey) {
    const long handle = Status(L"KWO_RegCreateKey", {Handle(), L"made\\below"});

    EXPECT_NE(handle, 0);
    EXPECT_TRUE(KeyExists(L"made\\below"));
    EXPECT_EQ(Status(L"KWO_RegSetValue", {handle, L"", L"n", L"v"}), ERROR_SUCCESS);
    std::wstring value;
    EXPECT_EQ(GetValue(Handle(), L"made\\below", L"n", &value), ERROR_SUCCESS);
    EXPECT_EQ(value, L"v");
    EXPECT_TRUE(IsOpenKey(handle));
}

TEST_F(RegistryClass, CreateKeyOpensAnExistingKeyWithWhatIsInIt) {
    PutText(L"there", L"kept");
    const long handle = Status(L"KWO_RegCreateKey", {kCurrentUser, kSandbox});

    EXPECT_EQ(StoredBytes(L"there"), std::string("kept\0", 5));
    EXPECT_TRUE(IsOpenKey(handle));
}

TEST_F(RegistryClass, CreateKeyThatFailsGivesZeroAtFirst) {
    EXPECT_EQ(Status(L"KWO_RegCreateKey", {0, L"x"}), 0);
}

TEST_F(RegistryClassIntended, CreateKeyThatFailsGivesTheHandleOfTheCallBefore) {
    const long handle = Status(L"KWO_RegCreateKey", {Handle(), L"made"});
    ASSERT_NE(handle, 0);

    // One would expect 0.
    EXPECT_EQ(Status(L"KWO_RegCreateKey", {0, L"x"}), handle);
    EXPECT_TRUE(IsOpenKey(handle));
}

TEST_F(RegistryClass, TwoObjectsDoNotShareTheirHandle) {
    const long handle = Status(L"KWO_RegCreateKey", {Handle(), L"made"});
    const ComPtr<IDispatch> other = Create(L"KWORegistry");
    ASSERT_TRUE(other);

    EXPECT_EQ(Call(other.Get(), L"KWO_RegCreateKey", {0, L"x"}).result.lVal, 0);
    EXPECT_TRUE(IsOpenKey(handle));
}

// KWO_RegGetValueEx

TEST_F(RegistryClass, GetValueExReadsTextForATextDefault) {
    PutText(L"name", L"some text  ");

    const Var value = GetValueEx(L"name", L"default");
    EXPECT_EQ(value.Text(), L"some text");
}

TEST_F(RegistryClass, GetValueExReadsTextOfAnyLength) {
    for (const std::size_t length : {0u, 1u, 258u, 259u, 260u, 261u, 1024u, 5000u}) {
        PutText(L"name", std::wstring(length, L'x'));
        EXPECT_EQ(GetValueEx(L"name", L"default").Text(), std::wstring(length, L'x')) << length;
    }
}

TEST_F(RegistryClass, GetValueExCutsTextAtItsFirstZero) {
    Put(L"name", REG_SZ, L"ab\0cd", 12);

    EXPECT_EQ(GetValueEx(L"name", L"default").Text(), L"ab");
}

TEST_F(RegistryClass, GetValueExGivesTheDefaultWhenNothingCanBeRead) {
    EXPECT_EQ(GetValueEx(L"missing", L"default").Text(), L"default");
    EXPECT_EQ(GetValueEx(L"missing", 7).lVal, 7);
    const Outcome closed = Call(mRegistry.Get(), L"KWO_RegGetValueEx", {0, L"x", L"default"});
    EXPECT_EQ(Hex(closed.status), Hex(S_OK));
    EXPECT_EQ(closed.result.Text(), L"default");
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
    EXPECT_EQ(asByte.vt, VT_UI1);
    EXPECT_EQ(asByte.bVal, 200);
    const Var asShort = GetValueEx(L"number", static_cast<short>(0));
    EXPECT_EQ(asShort.vt, VT_I2);
    EXPECT_EQ(asShort.iVal, 200);
    const Var asLong = GetValueEx(L"number", 0);
    EXPECT_EQ(asLong.vt, VT_I4);
    EXPECT_EQ(asLong.lVal, 200);
    const Var asSingle = GetValueEx(L"number", single);
    EXPECT_EQ(asSingle.vt, VT_R4);
    EXPECT_EQ(asSingle.fltVal, 200.0f);
    const Var asDouble = GetValueEx(L"number", 0.0);
    EXPECT_EQ(asDouble.vt, VT_R8);
    EXPECT_EQ(asDouble.dblVal, 200.0);
    const Var asCurrency = GetValueEx(L"number", currency);
    EXPECT_EQ(asCurrency.vt, VT_CY);
    EXPECT_EQ(asCurrency.cyVal.int64, 2000000);
    const Var asBoolean = GetValueEx(L"number", false);
    EXPECT_EQ(asBoolean.vt, VT_BOOL);
    EXPECT_EQ(asBoolean.boolVal, VARIANT_TRUE);
}

TEST_F(RegistryClass, GetValueExZeroIsFalse) {
    PutNumber(L"number", 0);

    EXPECT_EQ(GetValueEx(L"number", true).boolVal, VARIANT_FALSE);
}

TEST_F(RegistryClass, GetValueExReadsLargeNumbersAsSigned) {
    PutNumber(L"number", 0xFFFFFFFF);

    EXPECT_EQ(GetValueEx(L"number", 0).lVal, -1);
    EXPECT_EQ(GetValueEx(L"number", 0.0).dblVal, -1.0);
    EXPECT_EQ(GetValueEx(L"number", static_cast<short>(0)).iVal, -1);
}

TEST_F(RegistryClass, GetValueExDoesNotRaiseWhenTheNumberDoesNotFit) {
    Var byte;
    byte.vt = VT_UI1;
    byte.bVal = 9;
    for (const DWORD number : {32768u, 0xFFFF7FFFu}) {
        PutNumber(L"number", number);
        EXPECT_EQ(Hex(Call(mRegistry.Get(), L"KWO_RegGetValueEx", {Handle(), L"number", static_cast<short>(9)}).status),
                  Hex(S_OK));
    }
    PutNumber(L"number", 256);
    EXPECT_EQ(Hex(Call(mRegistry.Get(), L"KWO_RegGetValueEx", {Handle(), L"number", byte}).status), Hex(S_OK));
    for (const DWORD number : {32767u, 0xFFFF8000u}) {
        PutNumber(L"number", number);
        EXPECT_EQ(GetValueEx(L"number", static_cast<short>(9)).iVal, static_cast<short>(number));
    }
}

TEST_F(RegistryClass, GetValueExGivesTheDefaultForTextWhereANumberIsWanted) {
    PutText(L"text", L"longer than four bytes");

    EXPECT_EQ(GetValueEx(L"text", 7).lVal, 7);
}

TEST_F(RegistryClass, GetValueExReadsDates) {
    PutText(L"date", L"2004-03-05");

    const Var date = GetValueEx(L"date", Var::Date(1));
    EXPECT_EQ(date.vt, VT_DATE);
    EXPECT_EQ(date.date, 38051.0);
}

TEST_F(RegistryClass, GetValueExReadsZeroAsTheFirstDate) {
    PutText(L"date", L"0");

    const Var date = GetValueEx(L"date", Var::Date(1));
    EXPECT_EQ(date.vt, VT_DATE);
    EXPECT_EQ(date.date, 0.0);
}

TEST_F(RegistryClass, GetValueExGivesTheDefaultForTextThatIsNoDate) {
    for (const wchar_t* text : {L"no date", L"", L"00", L"32/32/32/32"}) {
        PutText(L"date", text);
        const Var date = GetValueEx(L"date", Var::Date(1.5));
        EXPECT_EQ(date.vt, VT_DATE) << Narrow(text);
        EXPECT_EQ(date.date, 1.5) << Narrow(text);
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
        EXPECT_EQ(object.vt, VT_DISPATCH);
        EXPECT_EQ(object.pdispVal, &probe);
    }
    EXPECT_EQ(probe.references, 0u);
    EXPECT_EQ(GetValueEx(L"number", Var()).vt, VT_EMPTY);
    EXPECT_EQ(GetValueEx(L"number", Var::Null()).vt, VT_NULL);
    EXPECT_EQ(GetValueEx(L"number", decimal).vt, VT_DECIMAL);
    Var array;
    array.vt = VT_ARRAY | VT_I4;
    array.parray = SafeArrayCreateVector(VT_I4, 3, 2);
    const Var copy = GetValueEx(L"number", array);
    EXPECT_EQ(copy.vt, VT_ARRAY | VT_I4);
    EXPECT_NE(copy.parray, array.parray);
    LONG lower = 0;
    EXPECT_EQ(Hex(SafeArrayGetLBound(copy.parray, 1, &lower)), Hex(S_OK));
    EXPECT_EQ(lower, 3);
}

TEST_F(RegistryClass, GetValueExReturnsErrorValuesAsTheVeryNumber) {
    PutNumber(L"number", 5);
    for (const SCODE code : {SCODE{0}, SCODE{5}, SCODE{0xFFFF}, SCODE{0x10000}, SCODE{-5},
                             static_cast<SCODE>(0x800A0005), static_cast<SCODE>(0x800A0000), E_FAIL}) {
        const Var value = GetValueEx(L"number", Var::Error(code));
        EXPECT_EQ(value.vt, VT_ERROR);
        EXPECT_EQ(Hex(value.scode), Hex(code));
    }
}

TEST_F(RegistryClass, GetValueExReturnsDefaultsOfEveryTypeAsTheyAre) {
    Probe probe;
    {
        Var unknown(static_cast<IDispatch*>(&probe));
        unknown.vt = VT_UNKNOWN;
        const Var object = GetValueEx(L"none", unknown);
        EXPECT_EQ(object.vt, VT_UNKNOWN);
        EXPECT_EQ(object.punkVal, static_cast<IUnknown*>(&probe));
    }
    EXPECT_EQ(probe.references, 0u);
    Var nothing;
    nothing.vt = VT_UNKNOWN;
    EXPECT_EQ(GetValueEx(L"none", nothing).vt, VT_UNKNOWN);
    Var oddBoolean(true);
    oddBoolean.boolVal = 5;
    EXPECT_EQ(GetValueEx(L"none", oddBoolean).boolVal, 5);
    EXPECT_EQ(GetValueEx(L"none", Var::UnsignedLong(7)).vt, VT_UI4);
}

TEST_F(RegistryClass, GetValueExTakesAVariableAsDefault) {
    Var fallback(L"default");
    Bstr text(L"other");
    PutText(L"name", L"stored");

    EXPECT_EQ(GetValueEx(L"name", Var::Ref(&fallback)).Text(), L"stored");
    EXPECT_EQ(GetValueEx(L"none", Var::Ref(&fallback)).Text(), L"default");
    EXPECT_EQ(GetValueEx(L"none", Var::Ref(text.InOut())).Text(), L"other");
    EXPECT_EQ(fallback.Text(), L"default");
}

TEST_F(RegistryClass, GetValueExLeavesTheKeyOpen) {
    GetValueEx(L"none", L"x");

    DWORD count = 0;
    EXPECT_EQ(RegQueryInfoKeyW(mKey, nullptr, nullptr, nullptr, nullptr, nullptr, nullptr, &count, nullptr, nullptr,
                               nullptr, nullptr),
              ERROR_SUCCESS);
}

TEST_F(RegistryClass, StrangeNamesGoInAndOut) {
    for (const wchar_t* name : {L"with blank", L"a.b", L"!\"$%&/()=?", L"{guid}", L"tab\there", L"back\\slash"}) {
        EXPECT_EQ(SetValue(name, L"v"), ERROR_SUCCESS) << Narrow(name);
        EXPECT_EQ(TextOf(name), L"v") << Narrow(name);
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

    EXPECT_EQ(after, before);
}

}  // namespace
}  // namespace kwo::com_test
