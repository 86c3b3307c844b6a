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

/// The numbered texts for the user, in the user's language. A companion component reads them from a file, once. Until
/// then, and without a file, every number is undefined.
class MessageTable final : public frame::MessageLookup {
public:
    /// `programName` is the name by which messages are asked for; the first load sets it if it is empty. Keeps
    /// references to all of these; they must outlive the table.
    MessageTable(const platform::Platform& services, frame::HostIdentity& identity, frame::MKWORoutines& routines,
                 MKWOLocale& locale, frame::ApiResult& apiResult, Text& programName);

    /// Loads the table at the first call; later calls do nothing. A missing file leaves the table empty.
    ///
    /// Raises what creating or calling the companion raises, and TypeMismatch, Overflow or SubscriptOutOfRange for a
    /// malformed answer. Later calls raise the same error without another try, until ForgetFailure.
    void KWOInitialize();
    /// Makes the next KWOInitialize try again after a failure.
    void ForgetFailure() { mFailure.reset(); }
    /// The text of `msgNo` with every "%1", "%2" ... replaced by the values; "Undefined Message" if there is none.
    /// Loads nothing. Raises TypeMismatch for a value that cannot be converted to text.
    Text KWO_GetMsg(std::int32_t msgNo, std::span<const platform::Variant> args = {}) const;

    /// As KWO_GetMsg, but nothing as long as no file was loaded.
    std::optional<Text> LoadedMessage(std::int32_t number, std::span<const Text> values = {}) override;

    /// Sets the path of the message file, before the first load. Without it the load chooses the path.
    void SetMsgFilePath(TextView path) {
        mMsgFilePath = path;
        ForgetFailure();
    }
    /// The path of the message file; empty until it is set or chosen.
    const Text& MsgFilePath() const { return mMsgFilePath; }

private:
    void LoadByCompanion();
    Text DefaultFilePath();
    bool IsFile(const Text& path);
    void ChooseProgramName();
    bool Load(platform::HostObject& companion);
    Text TextOf(std::int32_t msgNo) const;

    platform::HostApplication& mHost;
    platform::ComponentFactory& mComponents;
    platform::Conversions& mConversions;
    frame::HostIdentity& mIdentity;
    frame::MKWORoutines& mRoutines;
    MKWOLocale& mLocale;
    frame::ApiResult& mApiResult;
    Text& mProgramName;

    bool mInitialised = false;
    bool mLoaded = false;
    std::optional<platform::ComponentError> mFailure;
    Text mMsgFilePath;
    std::shared_ptr<const platform::TextArray> mTextArray;
};

}  // namespace kwo::messages
