#include "kwocheck/findings.h"

#include <algorithm>
#include <utility>

#include "kwocheck/words.h"

namespace kwocheck {

namespace {

using Severity = Finding::Severity;

constexpr TextView kInstall = u"Install KWOUtil: start install.cmd of the ZIP file, or the installer.";
constexpr TextView kInstallForAll =
    u"Open the command prompt with \"Run as administrator\", change to the folder of the ZIP file, and type: "
    u".\\install.cmd /machine";
constexpr TextView kAskForRights = u"Ask the administrator of this computer to let you read it, or install again.";

/// Versions like "4.5.0.0" by their numbers: negative if `one` is older.
int CompareVersions(TextView one, TextView other) {
    const auto next = [](TextView& version) {
        int number = 0;
        while (!version.empty() && version.front() >= u'0' && version.front() <= u'9' && number < 100'000) {
            number = number * 10 + (version.front() - u'0');
            version.remove_prefix(1);
        }
        version.remove_prefix(std::min<std::size_t>(version.size(), 1));
        return number;
    };
    while (!one.empty() || !other.empty()) {
        const int left = next(one);
        const int right = next(other);
        if (left != right) return left < right ? -1 : 1;
    }
    return 0;
}

/// What the loader says when a file may not be loaded, and what helps.
struct LoadFailure {
    std::uint32_t code;
    TextView meaning;
    /// Empty if it is to install again.
    TextView nextStep;
};
constexpr TextView kAllowInScanner = u"Let the virus scanner allow the file, and install again if it has removed it.";
constexpr TextView kAllowFiles =
    u"Ask the administrator of this computer to allow KWOUtil.dll and KWOInit.dll. Smart App Control allows no single "
    u"files; you can only turn it off as a whole, in the settings of Windows.";
constexpr LoadFailure kLoadFailures[] = {
    {0x80040154, u"Windows does not find the class",
     u"Install KWOUtil again. If the program runs as administrator, install it for everybody."},
    {0x8007007E, u"Windows cannot load the file, or a file that it needs", {}},
    {0x800700C1, u"the file is damaged, or of the other bitness", {}},
    {0x80070005, u"this user may not use the file",
     u"Ask the administrator of this computer for the right to read and run it."},
    {0x8007000E, u"there is not enough memory", u"Close other programs."},
    {0x800700E1, u"a virus scanner holds the file back", kAllowInScanner},
    {0x800700E2, u"a virus scanner has removed the file", kAllowInScanner},
    {0x800704EC, u"a rule of this computer forbids to load the file", kAllowFiles},
    {0x800711C7, u"a rule of this computer, or Smart App Control of Windows 11, forbids to load the file", kAllowFiles},
    {0x80070241,
     u"a rule of this computer, or Smart App Control of Windows 11, forbids to load files without a signature",
     kAllowFiles},
    {0x8007045A, u"the file, or one that it needs, cannot start in the program",
     u"Close other programs, or sign out and in again."},
    {0x80040111, u"the file does not have this class", {}},
};

Text CodeAndReason(const Creation& creation) {
    Text text = u"0x" + Hexadecimal(creation.code, 8);
    if (!creation.reason.empty()) text += u", " + creation.reason;
    return text;
}

/// The findings about one bitness.
class ViewFindings {
public:
    ViewFindings(const Facts& facts, const View& view, std::vector<Finding>& findings)
        : mFacts(facts), mView(view), mFindings(findings) {}

    void Add() {
        for (const LibraryFacts& library : mView.libraries) {
            for (const ClassFacts& one : library.classes)
                AddOfClass(library.known, one);
            AddOfTypeLibrary(library);
            for (const OtherVersion& other : library.others)
                AddOfOtherVersion(library, other);
        }
        if (mView.messageFile) AddOfMessageFile(*mView.messageFile);
    }

private:
    template <class Entry>
    const Entry* Counting(const std::vector<Entry>& entries) const {
        return Effective(entries, mFacts.here.isElevated);
    }
    bool IsOwn() const { return mView.bitness == mFacts.here.own; }

    /// Joins what several classes have in common.
    void Say(Severity severity, Text what, Text nextStep, const ClassFacts* about) {
        const auto same = std::ranges::find_if(mFindings, [&](const Finding& known) {
            return known.severity == severity && known.bitness == mView.bitness && known.what == what;
        });
        if (same == mFindings.end()) {
            mFindings.push_back({severity, mView.bitness, std::move(what), std::move(nextStep), {}});
            if (about != nullptr) mFindings.back().classes.push_back(about->known.ProgId());
        } else if (about != nullptr) {
            same->classes.push_back(about->known.ProgId());
        }
    }
    void Problem(Text what, Text nextStep, const ClassFacts* about = nullptr) {
        mHasProblem = true;
        Say(Severity::kProblem, std::move(what), std::move(nextStep), about);
    }
    void Remark(Text what, Text nextStep, const ClassFacts* about = nullptr) {
        Say(Severity::kRemark, std::move(what), std::move(nextStep), about);
    }

    void AddOfClass(const KnownLibrary& library, const ClassFacts& one) {
        mHasProblem = false;
        const RegisteredClass* const entry = Counting(one.entries);
        if (entry == nullptr) {
            AddOfMissing(library, one);
            AddOfForeignName(one);
        } else {
            AddOfName(one);
            AddOfEntry(library, *entry, one);
            AddOfHidden(*entry, one);
        }
        if (one.creation && !mHasProblem) AddOfCreation(*one.creation, one);
    }

    /// An installer that is started once more does nothing.
    Text InstallAgain() const {
        const Text& version = mFacts.here.version;  // the file's name has three of its four numbers
        return u"Install KWOUtil again: start install.cmd of the ZIP file. After an installer, type: msiexec /famus "
               u"KWOUtil-" +
               version.substr(0, version.rfind(u'.')) + (mFacts.here.isWindows64 ? u"-x64.msi" : u"-x86.msi");
    }

    /// In programs of the own bitness. If a copy of the library is beside this program, also how to register that.
    Text HowToInstall(const KnownLibrary& library) const {
        Text step(kInstall);
        const Text copy = mFacts.here.folder + library.FileName();
        if (std::ranges::find(mFacts.copies, copy) != mFacts.copies.end()) {
            step += u" Or type: regsvr32 " + Text(mFacts.here.isElevated ? u"\"" : u"/n /i:user \"") + copy + u"\"";
        }
        return step;
    }

    void AddOfMissing(const KnownLibrary& library, const ClassFacts& one) {
        if (!one.entries.empty()) {
            return Problem(
                library.FileName() +
                    u" is registered for you alone. Programs that run as administrator, as this one does, find "
                    u"only what is registered for everybody.",
                Text(u"Start the program without an administrator's rights. Or: ") + Text(kInstallForAll), &one);
        }
        if (IsRegisteredForOther(one)) {
            Text what = u"Only the " + Bits(Other()) + u" " + library.FileName() + u" is registered, so " +
                        Bits(mView.bitness) + u" programs cannot use it.";
            if (IsOwn()) return Problem(std::move(what), HowToInstall(library), &one);
            return Remark(std::move(what), Text(u"If you need it in such programs: ") + InstallAgain(), &one);
        }
        // The other bitness would only say the same again.
        if (IsOwn()) Problem(library.FileName() + u" is not registered.", HowToInstall(library), &one);
    }

    Bitness Other() const { return mView.bitness == Bitness::k64 ? Bitness::k32 : Bitness::k64; }

    bool IsRegisteredForOther(const ClassFacts& one) const {
        const auto isRegistered = [&](const ClassFacts& other) {
            return other.known.classId == one.known.classId && Counting(other.entries) != nullptr;
        };
        return std::ranges::any_of(mFacts.views, [&](const View& view) {
            return view.bitness != mView.bitness &&
                   std::ranges::any_of(view.libraries, [&](const LibraryFacts& library) {
                       return std::ranges::any_of(library.classes, isRegistered);
                   });
        });
    }

    void AddOfName(const ClassFacts& one) {
        const RegisteredName* const name = Counting(one.names);
        if (name == nullptr) {
            return Problem(u"The class is registered, but its name is not, so CreateObject does not find it.",
                           InstallAgain(), &one);
        }
        if (name->isDenied)
            return Problem(u"You may not read the registry key of the name.", Text(kAskForRights), &one);
        AddOfForeignName(one);
    }

    void AddOfForeignName(const ClassFacts& one) {
        const RegisteredName* const name = Counting(one.names);
        if (name == nullptr || name->isDenied || AreSameIds(name->classId, one.known.classId)) return;
        Problem(u"The name belongs to a class of another vendor, " + name->classId + u", registered " +
                    For(name->scope) + u".",
                Text(u"Remove the program that uses this name, if you do not need it. ") + InstallAgain(), &one);
    }

    void AddOfEntry(const KnownLibrary& library, const RegisteredClass& entry, const ClassFacts& one) {
        if (entry.isDenied)
            return Problem(u"You may not read the registry key of the class.", Text(kAskForRights), &one);
        const Text where = u"\"" + entry.path + u"\", registered " + For(entry.scope) + u",";
        if (!AddOfFile(library, entry, where, &one)) return;
        if (entry.threadingModel == u"Apartment") return;
        const Text model = entry.threadingModel.empty() ? u"none" : u"\"" + entry.threadingModel + u"\"";
        Problem(
            u"The class is registered with the wrong threading model: " + model +
                u" instead of \"Apartment\". So Windows may create its objects on another thread than the program's.",
            InstallAgain(), &one);
    }

    /// False if the file is none of this product, so that nothing else can be said about it.
    bool AddOfFile(const KnownLibrary& library, const Registered& entry, const Text& where, const ClassFacts* about) {
        const FileFacts& file = entry.file;
        if (file.state == FileFacts::State::kMissing) {
            Problem(u"The file " + where + u" does not exist.", InstallAgain(), about);
            return false;
        }
        if (file.state == FileFacts::State::kDenied) {
            Problem(u"You may not read the file " + where + u" so your programs cannot load it.", Text(kAskForRights),
                    about);
            return false;
        }
        if (!IsOurs(file)) {
            Problem(u"The file " + where + u" is not " + library.FileName() + u" of KWOUtil" +
                        (file.product.empty() ? Text() : u", but belongs to \"" + file.product + u"\"") + u".",
                    Text(u"Remove the program that registered it, if you do not need it. ") + InstallAgain(), about);
            return false;
        }
        if (file.bitness != mView.bitness) {
            Problem(u"The file " + where + u" is " + (file.bitness ? Bits(*file.bitness) + u"," : Text(u"damaged,")) +
                        u" so " + Bits(mView.bitness) + u" programs cannot load it.",
                    InstallAgain(), about);
        }
        AddOfVersion(file, where, about);
        if (file.isBlocked) {
            Remark(u"Windows has marked the file " + where +
                       u" as one that comes from the Internet. Some programs and rules refuse such files.",
                   u"Open the file's properties and choose \"Unblock\", or unblock the ZIP file, unpack it again, and "
                   u"start install.cmd again.",
                   about);
        }
        return true;
    }

    void AddOfVersion(const FileFacts& file, const Text& where, const ClassFacts* about) {
        const int order = CompareVersions(file.version, mFacts.here.version);
        if (order < 0) {
            Problem(u"The file " + where + u" has the older version " + file.version + u", this check is of " +
                        mFacts.here.version + u".",
                    u"Close all programs that use KWOUtil. " + Text(kInstall), about);
        } else if (order > 0) {
            Remark(u"The file " + where + u" has the newer version " + file.version + u", this check is of " +
                       mFacts.here.version + u".",
                   u"Use the kwocheck.exe of that version.", about);
        }
    }

    /// The user's registration hides the one for everybody.
    void AddOfHidden(const RegisteredClass& counting, const ClassFacts& one) {
        if (counting.scope != Scope::kUser || one.entries.size() < 2) return;
        const RegisteredClass& hidden = one.entries.back();
        if (hidden.isDenied || AreSamePaths(hidden.file.path, counting.file.path)) return;
        Text state = u"version " + hidden.file.version;
        if (hidden.file.state != FileFacts::State::kThere) {
            state = u"the file does not exist";
        } else if (!IsOurs(hidden.file)) {
            state = u"not of KWOUtil";
        }
        Remark(u"Another copy is registered for everybody: \"" + hidden.path + u"\" (" + state +
                   u"). Your programs use yours; programs that run as administrator use that one.",
               u"Keep one of them. To remove the other, start uninstall.cmd in its folder, or remove KWOUtil in the "
               u"settings of Windows, under Apps.",
               &one);
    }

    void AddOfCreation(const Creation& creation, const ClassFacts& one) {
        if (creation.result == Creation::Result::kWorks) return;
        if (creation.result == Creation::Result::kNoAnswer) {
            return Problem(
                u"An object can be created, but calling a member of it fails: " + CodeAndReason(creation) + u".",
                InstallAgain(), &one);
        }
        for (const LoadFailure& known : kLoadFailures) {
            if (known.code == creation.code) {
                return Problem(u"It is registered, but cannot be created: " + Text(known.meaning) + u" (0x" +
                                   Hexadecimal(known.code, 8) + u").",
                               known.nextStep.empty() ? InstallAgain() : Text(known.nextStep), &one);
            }
        }
        Problem(u"It is registered, but cannot be created: " + CodeAndReason(creation) + u".", InstallAgain(), &one);
    }

    void AddOfTypeLibrary(const LibraryFacts& library) {
        const Text name = u"The type library of " + library.known.FileName();
        const RegisteredClass* const server = Counting(library.classes.front().entries);
        const Registered* const entry = Counting(library.entries);
        // Without the classes it is not missed.
        if (entry == nullptr) {
            if (server == nullptr) return;
            return Problem(name + u" is not registered. Editors do not complete names, and calls between threads fail.",
                           InstallAgain());
        }
        if (entry->isDenied)
            return Problem(u"You may not read the registry key of the type library.", Text(kAskForRights));
        if (server != nullptr && AreSamePaths(entry->file.path, server->file.path)) return;
        const Text where = u"\"" + entry->path + u"\", registered " + For(entry->scope) + u",";
        if (entry->file.state != FileFacts::State::kThere) {
            Problem(name + u" leads to " + where + u" which " +
                        (entry->file.state == FileFacts::State::kMissing ? u"does not exist." : u"you may not read."),
                    InstallAgain());
        } else if (!IsOurs(entry->file)) {
            Problem(name + u" leads to " + where + u" which is not of KWOUtil.", InstallAgain());
        } else if (server != nullptr) {
            Remark(
                name + u" leads to another copy than the classes: " + where + u" version " + entry->file.version + u".",
                InstallAgain());
        }
    }

    void AddOfOtherVersion(const LibraryFacts& library, const OtherVersion& other) {
        Text what = u"The type library of " + library.known.FileName() + u" is registered in version " + other.version +
                    u", too, " + For(other.scope);
        if (other.isDenied) {
            what += u".";
        } else {
            what += u": \"" + other.path + u"\"" +
                    (other.file.state == FileFacts::State::kMissing ? u", which does not exist." : u".");
        }
        Remark(std::move(what),
               u"Remove that version of KWOUtil: start its uninstall.cmd, or remove it in the settings of Windows, "
               u"under Apps.");
    }

    void AddOfMessageFile(const MessageFileFacts& file) {
        const Text name = u"The message file \"" + file.path + u"\"";
        if (file.state == FileFacts::State::kMissing) {
            return Problem(name +
                               u" does not exist. The component shows its built-in English texts, and some texts read "
                               u"\"Undefined Message\".",
                           u"Copy KWOInit.nls of the ZIP file into that folder.");
        }
        if (file.state == FileFacts::State::kDenied) {
            return Problem(name + u" cannot be read by you.", Text(kAskForRights));
        }
        if (file.isRefused) {
            return Problem(file.problems.back(),
                           u"Save the file as UTF-8 text, or copy KWOInit.nls of the ZIP file there.");
        }
        for (const Text& problem : file.problems)
            Problem(problem,
                    u"Correct this line of the message file. The pages of the manual about message texts say how.");
    }

    const Facts& mFacts;
    const View& mView;
    std::vector<Finding>& mFindings;
    /// Whether the class at hand has one.
    bool mHasProblem = false;
};

}  // namespace

std::vector<Finding> FindingsOf(const Facts& facts) {
    std::vector<Finding> findings;
    for (const View& view : facts.views)
        ViewFindings(facts, view, findings).Add();
    return findings;
}

}  // namespace kwocheck
