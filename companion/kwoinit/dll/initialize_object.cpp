#include <optional>

#include "com/server/automation_object.h"
#include "com/server/class_factory.h"
#include "kwoinit.h"
#include "kwoinit/dll/debugger_report.h"
#include "kwoinit/dll/message_arrays.h"
#include "kwoinit/dll/message_file_source.h"
#include "kwoinit/message_errors.h"
#include "kwoinit/message_file.h"

namespace kwo::kwoinit {

namespace {

using com::Required;
using com::VariantBool;

constexpr com::MemberThunk kMembers[] = {com::Member<&_KWOInitialize::KWO_MsgTableSize>,
                                         com::Member<&_KWOInitialize::KWO_MsgTableLoad>};

com::ClassInfo& Info() {
    static constinit com::ClassInfo info(CLSID_KWOInitialize, IID__KWOInitialize, nullptr, u"KWOInitialize", kMembers);
    return info;
}

class InitializeObject final : public com::AutomationObject<_KWOInitialize> {
public:
    InitializeObject() : AutomationObject(Info()) {}

    STDMETHODIMP KWO_MsgTableSize(BSTR* programName, BSTR* messageFilePath, LONG* indexStart, LONG* indexEnd,
                                  LONG* textSize, VARIANT_BOOL* found) override {
        return Run(u".KWO_MsgTableSize", [&] {
            VARIANT_BOOL& answer = Required(found);
            LONG& first = Required(indexStart);
            LONG& last = Required(indexEnd);
            LONG& characters = Required(textSize);
            mProgram = com::ToText(Required(programName));
            const auto extent = Open(com::ToText(Required(messageFilePath))).value_or(MessageFile::Extent{});
            first = extent.lowest;
            last = extent.highest;
            characters = extent.characters;
            answer = VariantBool(extent.highest != 0);
        });
    }
    STDMETHODIMP KWO_MsgTableLoad(LONG* language, SAFEARRAY** indexArray, SAFEARRAY** textArray) override {
        return Run(u".KWO_MsgTableLoad", [&] {
            const auto identifier = static_cast<std::uint16_t>(Required(language));
            SAFEARRAY* const index = CheckedArray(indexArray, VT_I2, u"IdxArray");
            SAFEARRAY* const texts = CheckedArray(textArray, VT_BSTR, u"TextArray");
            if (!mFile) {
                Raise(MessageError::NotSized, {}, u"KWO_MsgTableSize has to find a message table before it is loaded");
            }
            FillTexts(texts, mFile->In(mProgram, identifier));
            FillIndex(index, texts);
        });
    }

private:
    /// Nothing if there is no file, or no text for the program in it; the file is then not kept.
    std::optional<MessageFile::Extent> Open(TextView path) {
        mFile.reset();
        DebuggerReport report;
        const auto found = Find(path, report);
        if (!found) return std::nullopt;
        mFile.emplace(found->bytes, found->path, report);
        const auto extent = mFile->ExtentOf(mProgram);
        if (!extent) mFile.reset();
        return extent;
    }

    static std::optional<FoundFile> Find(TextView path, ProblemReport& report) {
        try {
            return FindMessageFile(path);
        } catch (const platform::ComponentError& refusal) {
            report.Problem(refusal.description);
            throw;
        }
    }

    std::optional<MessageFile> mFile;
    Text mProgram;
};

}  // namespace

}  // namespace kwo::kwoinit

namespace kwo::com {

namespace {

ClassEntry InitializeClass() {
    return {CLSID_KWOInitialize, u"KWOInitialize", &Make<kwoinit::InitializeObject>};
}

constexpr ClassSource kClasses[] = {InitializeClass};

}  // namespace

std::span<const ClassSource> Classes() {
    return kClasses;
}

void OnThreadEnd() noexcept {}
void OnUnload() noexcept {}

}  // namespace kwo::com
