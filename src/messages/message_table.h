#pragma once

#include <cstdint>
#include <memory>
#include <optional>
#include <span>

#include "frame/api_result.h"
#include "frame/host_identity.h"
#include "frame/message_lookup.h"
#include "frame/routines.h"
#include "messages/locale.h"
#include "platform/component_error.h"
#include "platform/platform.h"
#include "platform/variant.h"

namespace kwo::messages {

/// The numbered texts for the user, in the user's language.
/// A companion component reads them from a file, once.
///
///     messages.KWOInitialize();
///     const Text text = messages.KWO_GetMsg(1930, values);
///
/// Until it is loaded, and without a file, every number is undefined.
class MessageTable final : public frame::MessageLookup {
public:
    /// `programName` is the name by which messages are asked for; the first load sets it if it is empty.
    /// Keeps references to all of these; they must outlive the table. They need not be constructed yet, but for
    /// `services`.
    MessageTable(const platform::Platform& services, frame::HostIdentity& identity, frame::MKWORoutines& routines,
                 MKWOLocale& locale, frame::ApiResult& apiResult, Text& programName);

    /// Loads the table at the first call; later calls do nothing.
    /// A missing file leaves the table empty. Loads the locale settings first, because the user's language chooses the
    /// texts.
    ///
    /// Raises what creating or calling the companion raises, and TypeMismatch, Overflow or SubscriptOutOfRange for a
    /// malformed answer. Later calls raise the same error without another try, until ForgetFailure.
    void KWOInitialize();
    /// Makes the next KWOInitialize try again after a failure.
    void ForgetFailure() { mFailure.reset(); }
    /// The text of `msgNo` with every "%1", "%2" ... replaced by the values; "Undefined Message" if there is none.
    /// Inserted text is not searched again, and a marker without a value stays.
    /// Loads nothing. An error value is shown as its number.
    /// Raises TypeMismatch for any other value that cannot be converted to text.
    Text KWO_GetMsg(std::int32_t msgNo, std::span<const platform::Variant> args = {}) const;

    /// The text of `msgNo`, or `builtIn` if no file has one; the values are filled in as by KWO_GetMsg.
    /// Loads the table at the first call. Raises nothing but lack of memory.
    Text TextOrBuiltIn(std::int32_t msgNo, TextView builtIn, std::span<const Text> values = {});

    /// As KWO_GetMsg, but nothing as long as no file was loaded. Raises nothing but lack of memory.
    std::optional<Text> LoadedMessage(std::int32_t number, std::span<const Text> values = {}) override;

    /// Sets the path of the message file, before the first load.
    /// Without it the load chooses the path: KWOInit.nls beside the host's executable, or in other places inside the
    /// development environment.
    void SetMsgFilePath(TextView path) {
        mMsgFilePath = path;
        ForgetFailure();
    }
    /// The path of the message file; empty until it is set or chosen.
    const Text& MsgFilePath() const { return mMsgFilePath; }

private:
    /// Creates the companion and asks it; a table without texts takes the place of a missing file.
    void LoadByCompanion();
    /// Where the file should be. It need not be there.
    Text DefaultFilePath();
    /// False also for what cannot be looked at.
    bool IsFile(const Text& path);
    /// Sets the program name if it is empty, and replaces the names that stand for another program.
    void ChooseProgramName();
    /// False if the companion finds no file.
    bool Load(platform::HostObject& companion);
    /// Empty if there is none.
    TextView Known(std::int32_t msgNo) const;
    /// "Undefined Message" if there is none.
    TextView TextOf(std::int32_t msgNo) const;

    platform::HostApplication& mHost;
    platform::ComponentFactory& mComponents;
    platform::Conversions& mConversions;
    frame::HostIdentity& mIdentity;
    frame::MKWORoutines& mRoutines;
    MKWOLocale& mLocale;
    frame::ApiResult& mApiResult;
    Text& mProgramName;

    /// A load succeeded, with or without a file.
    bool mInitialised = false;
    /// A file was loaded.
    bool mLoaded = false;
    /// Why the last load failed, to be raised again.
    std::optional<platform::ComponentError> mFailure;
    Text mMsgFilePath;
    /// The texts by number; null as long as no file was loaded.
    std::shared_ptr<const platform::TextArray> mTextArray;
};

}  // namespace kwo::messages
