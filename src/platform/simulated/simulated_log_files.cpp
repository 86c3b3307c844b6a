#include "platform/simulated/simulated_log_files.h"

#include <new>

#include "platform/simulated/error_codes.h"
#include "platform/simulated/simulated_file_system.h"
#include "platform/simulated/text_codec.h"

namespace kwo::platform::simulated {
namespace {

constexpr std::int32_t kSharingViolation = 32;
constexpr std::int32_t kFileExists = 80;
constexpr std::int32_t kDiskFull = 112;

}  // namespace

SimulatedLogFiles::SimulatedLogFiles(World& world) : mWorld(world), mNames(world.services.files) {
    world.faults.Declare({{"CreateFile", {5, 3, 112, Faults::kNoMemory}},
                          {"WriteFile", {112, 5}},
                          {"CloseFile", {}},
                          {"DeleteFile", {5, Faults::kNoMemory}}});
}

LogFiles::File SimulatedLogFiles::CreateNew(TextView path) {
    const Call call(mWorld, "CreateFile");
    if (call.Fails()) return 0;
    const std::int32_t before = mWorld.lastError;
    if (mNames.Look(path) != FileSystem::kNoAttributes) {
        mWorld.lastError = kFileExists;
        return 0;
    }
    if (mWorld.lastError != kFileNotFound) return 0;
    mWorld.lastError = before;
    mWorld.log.Add("CreateFile " + ToUtf8(path));
    mNames.AddFile(path);
    mContents[Folded(path)].clear();
    mOpen[mNext] = Folded(path);
    return mNext++;
}

bool SimulatedLogFiles::Write(File file, std::string_view bytes) {
    const Call call(mWorld, "WriteFile");
    if (call.Fails()) return false;
    if (memoryIsShort) throw std::bad_alloc();
    const auto found = mOpen.find(file);
    if (found == mOpen.end()) {
        mWorld.lastError = kInvalidHandle;
        return false;
    }
    if (bytes.size() > freeBytes) {
        mWorld.lastError = kDiskFull;
        return false;
    }
    freeBytes -= bytes.size();
    mContents[found->second] += bytes;
    return true;
}

void SimulatedLogFiles::Close(File file) {
    const Call call(mWorld, "CloseFile");
    mWorld.log.Add("CloseFile");
    if (mOpen.erase(file) == 0) mWorld.lastError = kInvalidHandle;
}

bool SimulatedLogFiles::Delete(TextView path) {
    const Call call(mWorld, "DeleteFile");
    mWorld.log.Add("DeleteFile " + ToUtf8(path));
    if (call.Fails()) return false;
    const std::int32_t attributes = mNames.Look(path);
    if (attributes == FileSystem::kNoAttributes) return false;
    const Text name = Folded(path);
    for (const auto& [file, open] : mOpen) {
        if (open != name) continue;
        mWorld.lastError = kSharingViolation;
        return false;
    }
    if ((attributes & FileSystem::kFolder) != 0) {
        mWorld.lastError = kAccessDenied;
        return false;
    }
    mNames.Remove(path);
    mContents.erase(name);
    return true;
}

const std::string* SimulatedLogFiles::Content(TextView path) const {
    const auto found = mContents.find(Folded(path));
    return found == mContents.end() ? nullptr : &found->second;
}

}  // namespace kwo::platform::simulated
