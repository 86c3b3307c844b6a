// Tables as clients get them, late bound by names and by the virtual table.

#include <string>

#include "companion_fixture.h"
#include "kwoinit.h"
#include "support/debug_output.h"

namespace kwo::com_test {
namespace {

constexpr char kMessages[] =
    "[KWOUtil]\n3 = three\n5 = five\n6 = six\n[KWOUtil 0407]\n3 = drei\n[Other]\n100 = hundred\n";
constexpr SCODE kFileUnreadable = static_cast<SCODE>(0x80047601);
constexpr SCODE kFileTooLarge = static_cast<SCODE>(0x80047602);
constexpr SCODE kNotText = static_cast<SCODE>(0x80047603);
constexpr SCODE kNotSized = static_cast<SCODE>(0x80047606);
constexpr SCODE kBadArray = static_cast<SCODE>(0x80047607);

class Table : public ::testing::Test {
protected:
    void SetUp() override { ASSERT_TRUE(mCompanion); }

    /// As the component calls it: named, typed, by reference.
    Outcome Size(const std::wstring& path, const std::wstring& program = L"KWOUtil") {
        Bstr programName(program);
        Bstr filePath(path);
        return CallNamed(mCompanion.Get(), L"KWO_MsgTableSize", {},
                         {{L"ProgramName", Var::Ref(programName.InOut())},
                          {L"MsgFilePath", Var::Ref(filePath.InOut())},
                          {L"IdxArrayStart", Var::Ref(&mFirst)},
                          {L"IdxArrayEnd", Var::Ref(&mLast)},
                          {L"TextArraySize", Var::Ref(&mSize)}});
    }
    bool Found(const std::wstring& path, const std::wstring& program = L"KWOUtil") {
        const Outcome outcome = Size(path, program);
        EXPECT_EQ(Hex(outcome.status), Hex(S_OK)) << Narrow(outcome.description);
        EXPECT_EQ(outcome.result.vt, VT_BOOL);
        return outcome.result.boolVal == VARIANT_TRUE;
    }
    Outcome Load(LONG language, const Var& index, const Var& texts) {
        return CallNamed(mCompanion.Get(), L"KWO_MsgTableLoad", {},
                         {{L"Language", Var::Ref(&language)}, {L"IdxArray", index}, {L"TextArray", texts}});
    }
    Outcome Load(LONG language, Array& index, Array& texts) {
        return Load(language, index.Reference(VT_I2), texts.Reference(VT_BSTR));
    }
    std::wstring Bounds() const {
        return std::to_wstring(mFirst) + L".." + std::to_wstring(mLast) + L" " + std::to_wstring(mSize);
    }

    ComPtr<IDispatch> mCompanion = CreateCompanion();
    TemporaryFile mFile{kMessages};
    LONG mFirst = -1;
    LONG mLast = -1;
    LONG mSize = -1;
};

TEST_F(Table, SizeTellsTheBoundsOfTheProgram) {
    EXPECT_TRUE(Found(mFile.Path()));
    EXPECT_EQ(Bounds(), L"3..6 16");
    EXPECT_TRUE(Found(mFile.Path(), L"OTHER"));
    EXPECT_EQ(Bounds(), L"100..100 7");
    EXPECT_TRUE(Found(mFile.Path(), L"Unknown"));
    EXPECT_EQ(Bounds(), L"3..6 16");
}

TEST_F(Table, LoadFillsTheTextsOfTheLanguageWithinTheBounds) {
    ASSERT_TRUE(Found(mFile.Path()));
    Array index(VT_I2, 1, 1);
    Array texts(VT_BSTR, 3, 4);

    ASSERT_EQ(Hex(Load(0x0407, index, texts).status), Hex(S_OK));

    EXPECT_EQ(texts.Text(3), L"drei");
    EXPECT_EQ(texts.Text(4), L"");
    EXPECT_EQ(texts.Text(5), L"five");
    EXPECT_EQ(texts.Text(6), L"six");
    EXPECT_EQ(index.Lowest(), 3);
    EXPECT_EQ(index.Highest(), 6);
    EXPECT_EQ(index.Number(3), 1);
    EXPECT_EQ(index.Number(4), 0);
    EXPECT_EQ(index.Number(6), 1);
}

TEST_F(Table, ArraysOfOtherBoundsGetWhatLiesWithin) {
    ASSERT_TRUE(Found(mFile.Path()));
    Array index(VT_I2, 0, 1);
    Array texts(VT_BSTR, -2, 8);
    texts.Put(-2, L"old");
    texts.Put(5, L"old");

    ASSERT_EQ(Hex(Load(0x0409, index, texts).status), Hex(S_OK));

    EXPECT_EQ(texts.Lowest(), -2);
    EXPECT_EQ(texts.Highest(), 5);
    EXPECT_EQ(texts.Text(-2), L"");
    EXPECT_EQ(texts.Text(3), L"three");
    EXPECT_EQ(texts.Text(5), L"five");
    EXPECT_EQ(index.Lowest(), -2);
    EXPECT_EQ(index.Highest(), 5);
}

TEST_F(Table, AnArrayOfNoElementsStaysOne) {
    ASSERT_TRUE(Found(mFile.Path()));
    Array index(VT_I2, 1, 1);
    Array texts(VT_BSTR, 3, 0);

    EXPECT_EQ(Hex(Load(0x0409, index, texts).status), Hex(S_OK));

    EXPECT_EQ(texts.Highest(), 2);
    EXPECT_EQ(index.Highest(), 1);
}

TEST_F(Table, TheIndexEndsAtWhatSixteenBitsCount) {
    ASSERT_TRUE(Found(mFile.Path()));
    Array index(VT_I2, 1, 1);
    Array texts(VT_BSTR, 1, 40'000);

    ASSERT_EQ(Hex(Load(0x0409, index, texts).status), Hex(S_OK));

    EXPECT_EQ(index.Lowest(), 1);
    EXPECT_EQ(index.Highest(), 32'767);
    EXPECT_EQ(index.Number(5), 1);
}

TEST_F(Table, AnIndexOfFixedSizeOrInUseStaysAsItIs) {
    ASSERT_TRUE(Found(mFile.Path()));
    Array index(VT_I2, 1, 1);
    Array texts(VT_BSTR, 3, 4);

    SafeArrayLock(index.Get());
    EXPECT_EQ(Hex(Load(0x0409, index, texts).status), Hex(S_OK));
    SafeArrayUnlock(index.Get());
    EXPECT_EQ(index.Highest(), 1);
    EXPECT_EQ(index.Number(1), 0);

    for (const int fixed : {FADF_FIXEDSIZE, FADF_STATIC, FADF_AUTO, FADF_EMBEDDED}) {
        index.Get()->fFeatures = static_cast<USHORT>(index.Get()->fFeatures | fixed);
        EXPECT_EQ(Hex(Load(0x0409, index, texts).status), Hex(S_OK));
        index.Get()->fFeatures = static_cast<USHORT>(index.Get()->fFeatures & ~fixed);
        EXPECT_EQ(index.Highest(), 1) << fixed;
        EXPECT_EQ(index.Number(1), 0) << fixed;
    }
    EXPECT_EQ(texts.Text(6), L"six");
}

// A script has no other arrays. `Dim index(1)` makes one of a fixed size, and `For Each` uses one.
TEST_F(Table, AnIndexOfVariantsOfFixedSizeOrInUseKeepsItsBounds) {
    ASSERT_TRUE(Found(mFile.Path()));
    Array index(VT_VARIANT, 1, 2);
    SAFEARRAY* const own = index.Get();
    const auto load = [&] {
        Array texts(VT_VARIANT, 3, 4);
        EXPECT_EQ(Hex(Load(0x0409, index.Reference(VT_VARIANT), texts.Reference(VT_VARIANT)).status), Hex(S_OK));
        EXPECT_EQ(index.Get(), own);
        EXPECT_EQ(index.Lowest(), 1);
        EXPECT_EQ(index.Highest(), 2);
        LONG at = 6;
        Var element;
        EXPECT_EQ(SafeArrayGetElement(texts.Get(), &at, &element), S_OK);
        EXPECT_EQ(element.vt, VT_BSTR) << "the texts are loaded all the same";
    };

    SafeArrayLock(own);
    load();
    EXPECT_EQ(own->cLocks, 1u);
    SafeArrayUnlock(own);
    for (const int fixed : {FADF_FIXEDSIZE, FADF_STATIC, FADF_AUTO, FADF_EMBEDDED}) {
        const USHORT usual = own->fFeatures;
        own->fFeatures = static_cast<USHORT>(usual | fixed);
        load();
        own->fFeatures = usual;
    }
}

TEST_F(Table, TextsOfFixedSizeAreFilledWhereTheyAre) {
    ASSERT_TRUE(Found(mFile.Path()));
    Array index(VT_VARIANT, 0, 1);
    Array texts(VT_VARIANT, 3, 4);
    SAFEARRAY* const own = texts.Get();
    void* const elements = own->pvData;
    own->fFeatures |= FADF_FIXEDSIZE;

    EXPECT_EQ(Hex(Load(0x0409, index.Reference(VT_VARIANT), texts.Reference(VT_VARIANT)).status), Hex(S_OK));

    ASSERT_EQ(texts.Get(), own);
    EXPECT_EQ(own->pvData, elements);
    EXPECT_EQ(static_cast<VARIANT*>(elements)[3].vt, VT_BSTR);
    EXPECT_EQ(index.Lowest(), 3) << "another array";
    EXPECT_EQ(index.Highest(), 6);
}

TEST_F(Table, ArraysOfVariantsStayAsTheyAreIfTheCallFails) {
    Array index(VT_VARIANT, 0, 1);
    Array texts(VT_VARIANT, 0, 1);
    LONG at = 0;
    Var number(1.5);
    Var seven(7);
    ASSERT_EQ(SafeArrayPutElement(index.Get(), &at, &number), S_OK);
    ASSERT_EQ(SafeArrayPutElement(texts.Get(), &at, &seven), S_OK);

    EXPECT_EQ(Hex(Load(0, index.Reference(VT_VARIANT), texts.Reference(VT_VARIANT)).scode), Hex(kNotSized));

    EXPECT_EQ(static_cast<VARIANT*>(index.Get()->pvData)->vt, VT_R8);
    EXPECT_EQ(static_cast<VARIANT*>(texts.Get()->pvData)->vt, VT_I4);
}

/// An object whose value, when it is read, frees the array that it stands in.
class Eraser final : public Probe {
public:
    explicit Eraser(Array& array) : mArray(array) {}
    STDMETHODIMP Invoke(DISPID id, REFIID, LCID, WORD, DISPPARAMS*, VARIANT* result, EXCEPINFO*, UINT*) override {
        EXPECT_EQ(id, DISPID_VALUE);
        erased = SafeArrayDestroyData(mArray.Get());
        result->vt = VT_BSTR;
        result->bstrVal = SysAllocString(L"value");
        return S_OK;
    }

    HRESULT erased = E_PENDING;

private:
    Array& mArray;
};

TEST_F(Table, AnArrayCannotBeFreedWhileItsElementsAreRead) {
    ASSERT_TRUE(Found(mFile.Path()));
    Array index(VT_VARIANT, 0, 1);
    Array texts(VT_VARIANT, 3, 4);
    Eraser eraser(texts);
    LONG at = 3;
    Var object(static_cast<IDispatch*>(&eraser));
    ASSERT_EQ(SafeArrayPutElement(texts.Get(), &at, &object), S_OK);

    EXPECT_EQ(Hex(Load(0x0409, index.Reference(VT_VARIANT), texts.Reference(VT_VARIANT)).status), Hex(S_OK));

    EXPECT_EQ(Hex(eraser.erased), Hex(DISP_E_ARRAYISLOCKED));
    EXPECT_EQ(texts.Get()->cLocks, 0u);
}

TEST_F(Table, AnArrayWhoseElementsAreFreedMeanwhileIsReplaced) {
    ASSERT_TRUE(Found(mFile.Path()));
    SAFEARRAYBOUND bounds = {4, 3};
    Array index(SafeArrayCreate(VT_VARIANT, 1, &bounds));  // a vector keeps the memory
    Array texts(VT_VARIANT, 3, 4);
    Eraser eraser(index);  // which has been read when the texts are
    LONG at = 3;
    Var object(static_cast<IDispatch*>(&eraser));
    ASSERT_EQ(SafeArrayPutElement(texts.Get(), &at, &object), S_OK);

    EXPECT_EQ(Hex(Load(0x0409, index.Reference(VT_VARIANT), texts.Reference(VT_VARIANT)).status), Hex(S_OK));

    EXPECT_EQ(Hex(eraser.erased), Hex(S_OK));
    Var element;
    ASSERT_EQ(SafeArrayGetElement(index.Get(), &at, &element), S_OK);
    EXPECT_EQ(element.vt, VT_I2);
}

TEST_F(Table, VariablesOfAScriptAreServed) {
    Var program(L"KWOUtil");
    Var path(mFile.Path());
    Var first;
    Var last;
    Var size;
    const Outcome sized = Call(mCompanion.Get(), L"KWO_MsgTableSize",
                               {Var::Ref(static_cast<VARIANT*>(&program)), Var::Ref(static_cast<VARIANT*>(&path)),
                                Var::Ref(static_cast<VARIANT*>(&first)), Var::Ref(static_cast<VARIANT*>(&last)),
                                Var::Ref(static_cast<VARIANT*>(&size))});
    ASSERT_EQ(Hex(sized.status), Hex(S_OK));
    EXPECT_EQ(first.lVal, 3);
    EXPECT_EQ(last.lVal, 6);
    EXPECT_EQ(size.lVal, 16);

    Var index;
    index.vt = VT_ARRAY | VT_I2;
    index.parray = SafeArrayCreateVector(VT_I2, 1, 1);
    Var texts;
    texts.vt = VT_ARRAY | VT_BSTR;
    texts.parray = SafeArrayCreateVector(VT_BSTR, 3, 4);
    const Outcome loaded =
        Load(0x0407, Var::Ref(static_cast<VARIANT*>(&index)), Var::Ref(static_cast<VARIANT*>(&texts)));
    ASSERT_EQ(Hex(loaded.status), Hex(S_OK));
    LONG at = 3;
    Bstr text;
    SafeArrayGetElement(texts.parray, &at, text.Out());
    EXPECT_EQ(text.Text(), L"drei");
    EXPECT_EQ(index.vt, VT_ARRAY | VT_I2);
    EXPECT_EQ(index.parray->rgsabound[0].cElements, 4u);
}

TEST_F(Table, AReferenceInsideAVariableIsFollowed) {
    ASSERT_TRUE(Found(mFile.Path()));
    Array index(VT_I2, 1, 1);
    Array texts(VT_BSTR, 3, 4);
    Var inner = texts.Reference(VT_BSTR);

    EXPECT_EQ(Hex(Load(0, index.Reference(VT_I2), Var::Ref(static_cast<VARIANT*>(&inner))).status), Hex(S_OK));

    EXPECT_EQ(texts.Text(3), L"three");
}

TEST_F(Table, ArraysByValueAreTakenAndStayTheCallersOwn) {
    ASSERT_TRUE(Found(mFile.Path()));
    Array index(VT_I2, 1, 1);
    Array texts(VT_BSTR, 3, 4);
    texts.Put(3, L"mine");
    VARIANT byValue[2] = {};
    byValue[0].vt = VT_ARRAY | VT_BSTR;
    byValue[0].parray = texts.Get();
    byValue[1].vt = VT_ARRAY | VT_I2;
    byValue[1].parray = index.Get();
    VARIANT arguments[3] = {byValue[0], byValue[1], Var(0x0409)};
    DISPPARAMS parameters = {arguments, nullptr, 3, 0};

    EXPECT_EQ(Hex(mCompanion->Invoke(IdOf(mCompanion.Get(), L"KWO_MsgTableLoad"), IID_NULL, 0, DISPATCH_METHOD,
                                     &parameters, nullptr, nullptr, nullptr)),
              Hex(S_OK));

    EXPECT_EQ(texts.Text(3), L"mine");
    EXPECT_EQ(index.Highest(), 1);
}

TEST_F(Table, ArraysOfVariantsAreFilledAsScriptsPassThem) {
    ASSERT_TRUE(Found(mFile.Path()));
    Array index(VT_VARIANT, 0, 1);
    Array texts(VT_VARIANT, 3, 4);
    Var held(static_cast<IDispatch*>(nullptr));
    held.vt = VT_ARRAY | VT_VARIANT;
    held.parray = SafeArrayCreateVector(VT_VARIANT, 3, 4);

    // The whole array by reference, and a variable that holds one.
    ASSERT_EQ(
        Hex(Call(mCompanion.Get(), L"KWO_MsgTableLoad", {0, index.Reference(VT_VARIANT), texts.Reference(VT_VARIANT)})
                .status),
        Hex(S_OK));
    ASSERT_EQ(
        Hex(Call(mCompanion.Get(), L"KWO_MsgTableLoad", {0, index.Reference(VT_VARIANT), Var::Ref(&held)}).status),
        Hex(S_OK));

    Array wanted(VT_BSTR, 3, 4);
    Array shorts(VT_I2, 1, 1);
    ASSERT_EQ(Hex(Call(mCompanion.Get(), L"KWO_MsgTableLoad", {0, shorts.Reference(VT_I2), wanted.Reference(VT_BSTR)})
                      .status),
              Hex(S_OK));
    int texted = 0;
    for (LONG at = 3; at < 7; ++at) {
        for (SAFEARRAY* const array : {texts.Get(), held.parray}) {
            Var element;
            ASSERT_EQ(SafeArrayGetElement(array, &at, &element), S_OK);
            ASSERT_EQ(element.vt, VT_BSTR) << at;
            EXPECT_EQ(com_support::View(element.bstrVal), wanted.Text(at)) << at;
        }
        texted += !wanted.Text(at).empty();
    }
    EXPECT_GT(texted, 0);
    LONG first = 3;
    Var number;
    ASSERT_EQ(SafeArrayGetElement(index.Get(), &first, &number), S_OK) << "redimensioned like the texts";
    EXPECT_EQ(number.vt, VT_I2);
}

TEST_F(Table, ArraysOfVariantsThatHoldNoTextsAreATypeMismatch) {
    ASSERT_TRUE(Found(mFile.Path()));
    Array shorts(VT_I2, 1, 1);
    Array variants(VT_VARIANT, 3, 4);
    LONG at = 4;
    Var null = Var::Null();
    ASSERT_EQ(SafeArrayPutElement(variants.Get(), &at, &null), S_OK);

    const Outcome outcome =
        Call(mCompanion.Get(), L"KWO_MsgTableLoad", {0, shorts.Reference(VT_I2), variants.Reference(VT_VARIANT)});

    EXPECT_EQ(Hex(outcome.status), Hex(DISP_E_TYPEMISMATCH));
    EXPECT_EQ(outcome.badArgument, 0u);
    Var element;
    at = 3;
    ASSERT_EQ(SafeArrayGetElement(variants.Get(), &at, &element), S_OK);
    EXPECT_EQ(element.vt, VT_EMPTY) << "nothing is written";
}

TEST_F(Table, ArraysOfOtherElementsAreATypeMismatch) {
    ASSERT_TRUE(Found(mFile.Path()));
    Array shorts(VT_I2, 1, 1);
    Array longs(VT_I4, 1, 1);
    Array variants(VT_VARIANT, 3, 4);
    Array texts(VT_BSTR, 3, 4);
    LONG number = 0;
    const Var none;

    // The first argument in the order of writing has the highest place.
    const auto expectMismatch = [&](const Var& index, const Var& text, UINT place) {
        const Outcome outcome = Call(mCompanion.Get(), L"KWO_MsgTableLoad", {0, index, text});
        EXPECT_EQ(Hex(outcome.status), Hex(DISP_E_TYPEMISMATCH));
        EXPECT_EQ(outcome.badArgument, place);
    };
    expectMismatch(longs.Reference(VT_I4), texts.Reference(VT_BSTR), 1);
    expectMismatch(Var::Ref(&number), texts.Reference(VT_BSTR), 1);
    expectMismatch(shorts.Reference(VT_I2), none, 0);
    expectMismatch(shorts.Reference(VT_I2), L"text", 0);
    // It says that it holds strings, but does not.
    expectMismatch(shorts.Reference(VT_I2), variants.Reference(VT_BSTR), 0);
    expectMismatch(texts.Reference(VT_I2), texts.Reference(VT_BSTR), 1);
}

TEST_F(Table, WhatIsNoTableOfOneDimensionIsAClearError) {
    ASSERT_TRUE(Found(mFile.Path()));
    Array index(VT_I2, 1, 1);
    Array texts(VT_BSTR, 3, 4);
    Array none(nullptr);
    SAFEARRAYBOUND bounds[2] = {{2, 0}, {2, 0}};
    Array square(SafeArrayCreate(VT_BSTR, 2, bounds));
    Array squareIndex(SafeArrayCreate(VT_I2, 2, bounds));

    const auto expectError = [&](Array& one, Array& other) {
        const Outcome outcome = Load(0, one, other);
        EXPECT_EQ(Hex(outcome.status), Hex(DISP_E_EXCEPTION));
        EXPECT_EQ(Hex(outcome.scode), Hex(kBadArray));
        EXPECT_EQ(outcome.source, L"KWOInitialize.KWO_MsgTableLoad");
        EXPECT_NE(outcome.description.find(L"Array"), std::wstring::npos);
    };
    expectError(index, none);
    expectError(none, texts);
    expectError(index, square);
    expectError(squareIndex, texts);
    EXPECT_EQ(texts.Text(3), L"");
}

TEST_F(Table, LoadNeedsASizeThatFoundSomething) {
    Array index(VT_I2, 1, 1);
    Array texts(VT_BSTR, 3, 4);
    EXPECT_EQ(Hex(Load(0, index, texts).scode), Hex(kNotSized));

    ASSERT_TRUE(Found(mFile.Path()));
    const TemporaryFile empty("; nothing\n");
    ASSERT_FALSE(Found(empty.Path()));
    EXPECT_EQ(Bounds(), L"0..0 0");

    const Outcome outcome = Load(0, index, texts);
    EXPECT_EQ(Hex(outcome.scode), Hex(kNotSized));
    EXPECT_EQ(outcome.source, L"KWOInitialize.KWO_MsgTableLoad");
}

TEST_F(Table, AMissingFileIsNoError) {
    EXPECT_FALSE(Found(L"C:\\nowhere\\NoSuchFile.nls"));
    EXPECT_EQ(Bounds(), L"0..0 0");
    EXPECT_FALSE(Found(L"C:\\nowhere\\"));
    EXPECT_FALSE(Found(L"\\\\.\\nul"));
    EXPECT_FALSE(Found(L"?*<>|"));
    EXPECT_FALSE(Found(mFile.Path() + std::wstring(L"\0b", 2)));
    EXPECT_FALSE(Found(std::wstring(70'000, L'x')));
}

TEST_F(Table, APipeIsNoFile) {
    constexpr wchar_t kPipe[] = L"\\\\.\\pipe\\kwoinit_com_tests";
    const HANDLE pipe =
        CreateNamedPipeW(kPipe, PIPE_ACCESS_DUPLEX, PIPE_TYPE_BYTE | PIPE_NOWAIT, 1, 64, 64, 0, nullptr);
    ASSERT_NE(pipe, INVALID_HANDLE_VALUE);

    EXPECT_FALSE(Found(kPipe));

    CloseHandle(pipe);
}

TEST_F(Table, TheFileBesideTheDllServesWhereThereIsNone) {
    for (const wchar_t* const path : {L"C:\\nowhere\\KWOInit.nls", L"kwoinit.nls", L"C:/nowhere/KWOInit.nls", L""}) {
        EXPECT_TRUE(Found(path)) << Narrow(path);
        EXPECT_EQ(mFirst, 1899);
        EXPECT_EQ(mLast, 1935);
    }
}

TEST_F(Table, FilesThatAreNoTextAreErrorsWithTheFileAndAReason) {
    const TemporaryFile wide(std::string("\xFF\xFE[\0K\0", 6));
    const TemporaryFile binary(std::string("MZ\x90\0\x03\0", 6));

    for (const TemporaryFile* const file : {&wide, &binary}) {
        const Outcome outcome = Size(file->Path());
        EXPECT_EQ(Hex(outcome.status), Hex(DISP_E_EXCEPTION));
        EXPECT_EQ(Hex(outcome.scode), Hex(kNotText));
        EXPECT_EQ(outcome.source, L"KWOInitialize.KWO_MsgTableSize");
        EXPECT_NE(outcome.description.find(file->Path()), std::wstring::npos) << Narrow(outcome.description);
        EXPECT_NE(outcome.description.find(L"UTF-8"), std::wstring::npos);
    }
    EXPECT_TRUE(Found(mFile.Path()));
}

TEST_F(Table, ARefusedFileSaysSoInTheDebugOutput) {
    const test_support::DebugOutput output;
    const TemporaryFile wide("1 = too early\n\xFF\n" + std::string((1 << 20) + 1, ';'));
    EXPECT_NE(Hex(Size(wide.Path()).status), Hex(S_OK));
    EXPECT_NE(output.Text().find(Narrow(wide.Path()) + "(1): it stands in no section"), std::string::npos)
        << output.Text();
    EXPECT_NE(output.Text().find("cannot be used: line 3 is longer than 1 MiB"), std::string::npos) << output.Text();

    const HANDLE held = CreateFileW(mFile.Path().c_str(), GENERIC_READ, 0, nullptr, OPEN_EXISTING, 0, nullptr);
    ASSERT_NE(held, INVALID_HANDLE_VALUE);
    EXPECT_EQ(Hex(Size(mFile.Path()).scode), Hex(kFileUnreadable));
    CloseHandle(held);
    EXPECT_NE(output.Text().find(Narrow(mFile.Path()) + " cannot be used: it cannot be opened"), std::string::npos)
        << output.Text();
}

TEST_F(Table, AProgramWithoutATextOfItsOwnIsServedKWOUtils) {
    const TemporaryFile file("[Host]\n[Host 0407]\n; nothing yet\n[KWOUtil]\n3 = three\n");
    ASSERT_TRUE(Found(file.Path(), L"Host"));
    EXPECT_EQ(Bounds(), L"3..3 5");
    Array index(VT_I2, 1, 1);
    Array texts(VT_BSTR, 3, 1);
    ASSERT_EQ(Hex(Load(0x0407, index, texts).status), Hex(S_OK));
    EXPECT_EQ(texts.Text(3), L"three");
}

TEST_F(Table, AFileOfMoreThan64MebibytesIsRefusedUnread) {
    const TemporaryFile large("");
    const HANDLE file = CreateFileW(large.Path().c_str(), GENERIC_WRITE, 0, nullptr, OPEN_EXISTING, 0, nullptr);
    SetFilePointer(file, (64 << 20) + 1, nullptr, FILE_BEGIN);
    SetEndOfFile(file);
    CloseHandle(file);

    EXPECT_EQ(Hex(Size(large.Path()).scode), Hex(kFileTooLarge));
}

TEST_F(Table, AFileThatAnotherWritesOrDeletesIsRead) {
    for (const DWORD access : {DWORD{GENERIC_WRITE}, DWORD{DELETE}}) {
        const HANDLE other =
            CreateFileW(mFile.Path().c_str(), access, FILE_SHARE_READ, nullptr, OPEN_EXISTING, 0, nullptr);
        ASSERT_NE(other, INVALID_HANDLE_VALUE);
        EXPECT_TRUE(Found(mFile.Path())) << access;
        CloseHandle(other);
    }
}

TEST_F(Table, AFileThatAnotherKeepsToItselfIsAnError) {
    const HANDLE held = CreateFileW(mFile.Path().c_str(), GENERIC_READ, 0, nullptr, OPEN_EXISTING, 0, nullptr);
    ASSERT_NE(held, INVALID_HANDLE_VALUE);

    EXPECT_EQ(Hex(Size(mFile.Path()).scode), Hex(kFileUnreadable));

    CloseHandle(held);
    EXPECT_TRUE(Found(mFile.Path()));
}

TEST_F(Table, AHundredThousandMessagesAreRead) {
    std::string bytes = "[KWOUtil]\n";
    for (int number = 1; number <= 100'000; ++number)
        bytes += std::to_string(number) + " = This is the text of message " + std::to_string(number) + "\n";
    const TemporaryFile file(bytes);
    Array index(VT_I2, 1, 1);
    Array texts(VT_BSTR, 1, 100'000);

    ASSERT_TRUE(Found(file.Path()));
    ASSERT_EQ(Hex(Load(0x0409, index, texts).status), Hex(S_OK));

    for (const int number : {1, 99'999, 100'000})
        EXPECT_EQ(texts.Text(number), L"This is the text of message " + std::to_wstring(number));
}

TEST_F(Table, TheVirtualTableServesCompiledClients) {
    const auto compiled = As<_KWOInitialize>(mCompanion.Get(), IID__KWOInitialize);
    ASSERT_TRUE(compiled);
    Bstr program(L"KWOUtil");
    Bstr path(mFile.Path());
    VARIANT_BOOL found = VARIANT_FALSE;
    ASSERT_EQ(Hex(compiled->KWO_MsgTableSize(program.InOut(), path.InOut(), &mFirst, &mLast, &mSize, &found)),
              Hex(S_OK));
    EXPECT_EQ(found, VARIANT_TRUE);
    EXPECT_EQ(Bounds(), L"3..6 16");

    LONG language = 0x0407;
    Array index(VT_I2, 1, 1);
    Array texts(VT_BSTR, 3, 4);
    ASSERT_EQ(Hex(compiled->KWO_MsgTableLoad(&language, index.InOut(), texts.InOut())), Hex(S_OK));
    EXPECT_EQ(texts.Text(3), L"drei");

    Array longs(VT_I4, 3, 4);
    EXPECT_EQ(Hex(compiled->KWO_MsgTableLoad(&language, index.InOut(), longs.InOut())), Hex(kBadArray));
    EXPECT_EQ(TakeErrorObject().source, L"KWOInitialize.KWO_MsgTableLoad");
    EXPECT_EQ(Hex(compiled->KWO_MsgTableLoad(&language, longs.InOut(), texts.InOut())), Hex(kBadArray));
}

TEST_F(Table, NullPointersAreErrorsForCompiledClients) {
    const auto compiled = As<_KWOInitialize>(mCompanion.Get(), IID__KWOInitialize);
    ASSERT_TRUE(compiled);
    Bstr text(L"x");
    BSTR* const strings[] = {nullptr, text.InOut()};
    for (int missing = 0; missing < 6; ++missing) {
        VARIANT_BOOL found = VARIANT_FALSE;
        EXPECT_EQ(Hex(compiled->KWO_MsgTableSize(strings[missing != 0], strings[missing != 1],
                                                 missing == 2 ? nullptr : &mFirst, missing == 3 ? nullptr : &mLast,
                                                 missing == 4 ? nullptr : &mSize, missing == 5 ? nullptr : &found)),
                  Hex(E_POINTER))
            << missing;
    }
    LONG language = 0;
    Array index(VT_I2, 1, 1);
    Array texts(VT_BSTR, 3, 4);
    EXPECT_EQ(Hex(compiled->KWO_MsgTableLoad(nullptr, index.InOut(), texts.InOut())), Hex(E_POINTER));
    EXPECT_EQ(Hex(compiled->KWO_MsgTableLoad(&language, nullptr, texts.InOut())), Hex(kBadArray));
    EXPECT_EQ(Hex(compiled->KWO_MsgTableLoad(&language, index.InOut(), nullptr)), Hex(kBadArray));
}

}  // namespace
}  // namespace kwo::com_test
