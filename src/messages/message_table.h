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

/// The numbered texts for the user, in the user's language. A companion component reads them from a file once; until
/// then, and where there is no file, every number is undefined.
class MessageTable final : public frame::MessageLookup {
public:
    /// `programName` is the name that the messages are asked for by. It is chosen here if nobody has set it.
    MessageTable(const platform::Platform& services, frame::HostIdentity& identity, frame::MKWORoutines& routines,
                 MKWOLocale& locale, frame::ApiResult& apiResult, Text& programName);

    /// Loads the table unless that was done before. A missing file leaves it empty. Raises what making or calling the
    /// companion raises, and TypeMismatch, Overflow or 9 for a malformed answer; later calls raise the same error
    /// without another try.
    void KWOInitialize();
    /// After a failure the next call of KWOInitialize tries again.
    void ForgetFailure() { mFailure.reset(); }
    /// The text of a number, "Undefined Message" when it has none, with every "%1", "%2" ... replaced by the values.
    /// Raises TypeMismatch for a value that has no text.
    Text KWO_GetMsg(std::int32_t msgNo, std::span<const platform::Variant> args = {}) const;

    /// Nothing while no file was loaded.
    std::optional<Text> LoadedMessage(std::int32_t number, std::span<const Text> values = {}) override;

    /// The message file; chosen at the first loading unless it is set before.
    void SetMsgFilePath(TextView path) {
        mMsgFilePath = path;
        ForgetFailure();
    }
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
