#include "platform/simulated/simulated_file_system.h"

#include <algorithm>

#include "platform/simulated/error_codes.h"
#include "platform/simulated/text_codec.h"

namespace kwo::platform::simulated {
namespace {

constexpr std::int32_t kInvalidName = 123;

Text Normal(TextView path) {
    Text normal = Folded(UpToZero(path));
    std::replace(normal.begin(), normal.end(), u'/', u'\\');
    while (!normal.empty() && normal.back() == u'\\')
        normal.pop_back();
    return normal;
}

Text Parent(const Text& normal) {
    const std::size_t cut = normal.rfind(u'\\');
    return cut == Text::npos ? Text() : normal.substr(0, cut);
}

/// A drive root or the current folder.
bool IsGround(const Text& normal) {
    return normal.empty() || (normal.size() == 2 && normal[1] == u':');
}

/// By the rules of listings: `?` one character, `*` any number of them.
bool Matches(TextView name, TextView pattern) {
    if (pattern.empty()) return name.empty();
    if (pattern.front() == u'*') {
        return Matches(name, pattern.substr(1)) || (!name.empty() && Matches(name.substr(1), pattern));
    }
    if (name.empty() || (pattern.front() != u'?' && pattern.front() != name.front())) return false;
    return Matches(name.substr(1), pattern.substr(1));
}

}  // namespace

SimulatedFileSystem::SimulatedFileSystem(World& world) : mWorld(world) {
    world.faults.Declare({{"GetFileAttributes", {2, 5, Faults::kNoMemory}},
                          {"GetFileAttributesAnsi", {2, 5, Faults::kNoMemory}},
                          {"FindFirstFile", {2, 5, Faults::kNoMemory}}});
}

std::int32_t SimulatedFileSystem::Attributes(TextView path) {
    const Call call(mWorld, "GetFileAttributes");
    return call.Fails() ? kNoAttributes : Look(path);
}

std::int32_t SimulatedFileSystem::AttributesAnsi(TextView path) {
    const Call call(mWorld, "GetFileAttributesAnsi");
    return call.Fails() ? kNoAttributes : Look(ThroughAnsi(path));
}

bool SimulatedFileSystem::ListsFile(TextView pattern) {
    const Call call(mWorld, "FindFirstFile");
    if (call.Fails()) return false;
    const TextView path = UpToZero(pattern);
    if (path.empty() || path.back() == u'\\' || path.back() == u'/') return false;
    const Text normal = Normal(path);
    const Text folder = Parent(normal);
    const TextView name = TextView(normal).substr(normal.rfind(u'\\') + 1);
    return std::any_of(mNames.begin(), mNames.end(), [&](const auto& entry) {
        return (entry.second & (kFolder | kHidden | kSystem)) == 0 && Parent(entry.first) == folder &&
               Matches(TextView(entry.first).substr(entry.first.rfind(u'\\') + 1), name);
    });
}

void SimulatedFileSystem::AddFile(TextView path, std::int32_t attributes) {
    const Text normal = Normal(path);
    mNames[normal] = attributes;
    for (Text folder = Parent(normal); !IsGround(folder); folder = Parent(folder))
        mNames.try_emplace(folder, kFolder);
}

void SimulatedFileSystem::Remove(TextView path) {
    mNames.erase(Normal(path));
}

std::int32_t SimulatedFileSystem::Look(TextView path) {
    const Text normal = Normal(path);
    if (UpToZero(path).empty()) {
        mWorld.lastError = kPathNotFound;
        return kNoAttributes;
    }
    if (normal.find_first_of(u"*?<>|\"") != Text::npos) {
        mWorld.lastError = kInvalidName;
        return kNoAttributes;
    }
    if (IsGround(normal)) return kFolder;
    if (const auto found = mNames.find(normal); found != mNames.end()) return found->second;
    const Text parent = Parent(normal);
    mWorld.lastError = IsGround(parent) || mNames.contains(parent) ? kFileNotFound : kPathNotFound;
    return kNoAttributes;
}

}  // namespace kwo::platform::simulated
