#include "kwocheck/survey.h"

#include <algorithm>
#include <utility>

#include "kwocheck/message_file_check.h"

namespace kwocheck {

namespace {

constexpr Scope kScopes[] = {Scope::kUser, Scope::kMachine};
constexpr TextView kCompanion = u"KWOInit";
constexpr TextView kMessageFile = u"KWOInit.nls";

Text FolderOf(const Text& path) {
    return path.substr(0, path.find_last_of(u'\\') + 1);
}

/// Everything as programs of one bitness see it.
class ViewSurvey {
public:
    ViewSurvey(System& system, const Surroundings& here, Bitness bitness)
        : mSystem(system), mHere(here), mBitness(bitness) {}

    View Of(const std::vector<KnownLibrary>& libraries) {
        View view{mBitness, {}, {}};
        for (const KnownLibrary& known : libraries) {
            LibraryFacts library{known, TypeLibrary(known), OtherVersions(known), {}};
            for (const KnownClass& one : known.classes)
                library.classes.push_back(Class(one));
            if (known.name == kCompanion) view.messageFile = MessageFileOf(library);
            view.libraries.push_back(std::move(library));
        }
        return view;
    }

private:
    RegistryText Stored(Scope scope, const Text& key, TextView value = {}) {
        return mSystem.ReadClasses(scope, mBitness, key, value);
    }

    /// False if nothing is registered there.
    bool FillFrom(const RegistryText& path, Scope scope, Registered& entry) {
        if (path.state == RegistryText::State::kMissing) return false;
        entry.scope = scope;
        entry.isDenied = path.state == RegistryText::State::kDenied;
        entry.path = path.text;
        if (!entry.isDenied) entry.file = mSystem.Examine(entry.path, mBitness);
        return true;
    }

    Text VersionKey(const KnownLibrary& known, const Text& version) const {
        return u"TypeLib\\" + known.libraryId + u"\\" + version +
               (mBitness == Bitness::k64 ? u"\\0\\win64" : u"\\0\\win32");
    }

    std::vector<OtherVersion> OtherVersions(const KnownLibrary& known) {
        std::vector<OtherVersion> others;
        for (const Scope scope : kScopes) {
            for (Text& version : mSystem.KeysBelow(scope, mBitness, u"TypeLib\\" + known.libraryId)) {
                OtherVersion other;
                if (version == known.version || !FillFrom(Stored(scope, VersionKey(known, version)), scope, other))
                    continue;
                other.version = std::move(version);
                others.push_back(std::move(other));
            }
        }
        return others;
    }

    std::vector<Registered> TypeLibrary(const KnownLibrary& known) {
        const Text key = VersionKey(known, known.version);
        std::vector<Registered> entries;
        for (const Scope scope : kScopes) {
            Registered entry;
            if (FillFrom(Stored(scope, key), scope, entry)) entries.push_back(std::move(entry));
        }
        return entries;
    }

    ClassFacts Class(const KnownClass& known) {
        ClassFacts facts{known, {}, {}, {}};
        const Text key = u"CLSID\\" + known.classId + u"\\InprocServer32";
        for (const Scope scope : kScopes) {
            const RegistryText name = Stored(scope, known.ProgId() + u"\\CLSID");
            if (name.state != RegistryText::State::kMissing) {
                facts.names.push_back({scope, name.state == RegistryText::State::kDenied, name.text});
            }
            RegisteredClass entry;
            if (!FillFrom(Stored(scope, key), scope, entry)) continue;
            entry.threadingModel = Stored(scope, key, u"ThreadingModel").text;
            facts.entries.push_back(std::move(entry));
        }
        if (mBitness == mHere.own && !IsSomebodyElses(facts)) facts.creation = mSystem.Create(known);
        return facts;
    }

    bool IsSomebodyElses(const ClassFacts& facts) const {
        const RegisteredName* const name = Effective(facts.names, mHere.isElevated);
        const RegisteredClass* const entry = Effective(facts.entries, mHere.isElevated);
        if (name != nullptr && !name->isDenied && !AreSameIds(name->classId, facts.known.classId)) return true;
        return entry != nullptr && entry->file.state == FileFacts::State::kThere && !IsOurs(entry->file);
    }

    std::optional<MessageFileFacts> MessageFileOf(const LibraryFacts& companion) {
        const RegisteredClass* const entry = Effective(companion.classes.front().entries, mHere.isElevated);
        if (entry == nullptr || entry->file.state != FileFacts::State::kThere) return std::nullopt;
        return CheckMessageFile(mSystem, FolderOf(entry->file.path) + Text(kMessageFile));
    }

    System& mSystem;
    const Surroundings& mHere;
    Bitness mBitness;
};

}  // namespace

Facts Survey(System& system, const std::vector<KnownLibrary>& libraries) {
    Facts facts{system.Describe(), {}, {}};
    const Bitness own = facts.here.own;
    const Bitness other = own == Bitness::k64 ? Bitness::k32 : Bitness::k64;
    facts.views.push_back(ViewSurvey(system, facts.here, own).Of(libraries));
    if (facts.here.isWindows64) facts.views.push_back(ViewSurvey(system, facts.here, other).Of(libraries));
    for (const KnownLibrary& library : libraries) {
        const Text path = facts.here.folder + library.FileName();
        if (system.Examine(path, own).state == FileFacts::State::kThere) facts.copies.push_back(path);
    }
    return facts;
}

}  // namespace kwocheck
