// The call trace with any texts, names and failures of the disk: nothing is raised but when a file cannot be made, no
// file of somebody else is touched, each line of a log begins with its time, the ring and the stack are those of the
// rules, and the last error of the system stays as it was.

#include "frame/trace.h"

#include <algorithm>
#include <cctype>
#include <string>
#include <vector>

#include "component/component.h"
#include "platform/component_error.h"
#include "platform/simulated/simulated_desktop.h"
#include "target.h"

namespace kwo::frame {
namespace {

/// "10:04:31 000.00", the line of a day, or one about memory or a split. CR LF in a text begins another line.
bool BeginsAsALine(std::string_view line) {
    if (line.starts_with("=== ") || line.starts_with("...Memory use changed. ")) return true;
    const auto digits = [&](std::size_t at, std::size_t count) {
        for (std::size_t i = 0; i < count; ++i) {
            if (at + i >= line.size() || std::isdigit(static_cast<unsigned char>(line[at + i])) == 0) return false;
        }
        return true;
    };
    const bool isTime = digits(0, 2) && line.substr(2, 1) == ":" && digits(3, 2) && line.substr(5, 1) == ":" &&
                        digits(6, 2) && line.substr(8, 1) == " " && digits(9, 3);
    return isTime || line.ends_with(" " + std::string(60, '='));
}

class Session {
public:
    explicit Session(fuzz::Input& input) : mInput(input) {
        mDesktop.files.AddFile(u"C:\\Program Files\\Host\\HOSTAPP1.log");
        mDesktop.files.AddFolder(u"C:\\Program Files\\Host\\HOSTAPP2.log");
        mDesktop.errors.system[112] = u"There is not enough space on the disk.\r\n";
        if (mInput.Once(4)) mDesktop.host.executableName = mInput.Text();
        if (mInput.Once(4)) mDesktop.host.userName = mDesktop.host.networkUserName = mInput.Text();
    }

    void Step() {
        constexpr int kFirstDayOfWindows = -109'205;  // 1601-01-01
        constexpr std::int32_t kLastError = 4'711;
        mDesktop.errors.SetLast(kLastError);
        bool keepsLastError = true;
        switch (mInput.Below(12)) {
            case 0:
                Start();
                keepsLastError = false;
                break;
            case 1:
                mTrace.KWO_TraceClose(mInput.Flag());
                break;
            case 2:
                mTrace.SetTraceFolder(mInput.Flag() ? mInput.Text() : Text(u"C:\\Program Files\\Host"));
                break;
            case 3:
                Push();
                break;
            case 4:
                Pop();
                keepsLastError = false;
                break;
            case 5:
                Fail();
                break;
            case 6:
                mDesktop.clock.Advance(platform::Milliseconds{mInput.Bits<std::uint32_t>()});
                break;
            case 7:
                mDesktop.clock.SetNow({std::max(mInput.Bits<std::int16_t>() * 80, kFirstDayOfWindows) + 0.25});
                break;
            default:
                Write();
                break;
        }
        if (keepsLastError) KWO_HOLDS(mDesktop.errors.Last() == kLastError);
        KWO_HOLDS(mDesktop.logFiles.OpenFiles() <= 1);
        CheckStack();
    }

    void End() {
        mDesktop.faults.Clear();
        mDesktop.logFiles.freeBytes = UINT64_MAX;
        mDesktop.logFiles.memoryIsShort = false;
        mTrace.KWO_TraceClose(false);
        KWO_HOLDS(mDesktop.logFiles.OpenFiles() == 0);
        KWO_HOLDS(mDesktop.logFiles.Content(u"C:\\Program Files\\Host\\HOSTAPP1.log") == nullptr);
        for (const Text& name : mNames) {
            const std::string* const content = mDesktop.logFiles.Content(name);
            if (content != nullptr) CheckLines(*content);
        }
    }

private:
    void Start() {
        const std::int32_t size = mInput.Flag() ? 0 : mInput.Below(6);
        const bool hadFile = mDesktop.logFiles.OpenFiles() > 0;
        try {
            mTrace.KWO_TraceStart(mInput.Flag() ? -1 : 0, size, mInput.Flag());
        } catch (const platform::ComponentError& error) {
            KWO_HOLDS(!hadFile && size == 0);
            KWO_HOLDS(error.number != 0 && !error.description.empty());
        }
        mNames.push_back(mTrace.FileName());
    }
    void Push() {
        const Text routine = mInput.Text();
        constexpr std::int16_t kModes[] = {-2, 0, 1, -1};
        const std::int16_t mode = mInput.Of(kModes);
        const std::int32_t depth = mTrace.KWO_RoutinePush(routine, mode);
        if (!mTrace.IsOn()) {
            KWO_HOLDS(depth == 0);
            return;
        }
        const bool inherited = mStack.empty() || mStack.back().second;
        mStack.emplace_back(routine, mode == -2 ? inherited : mode != 0);
        KWO_HOLDS(depth == static_cast<std::int32_t>(mStack.size()));
    }
    void Pop() {
        const std::int32_t level = mInput.Below(12) - 2;
        mTrace.KWO_RoutinePop(level);
        if (!mTrace.IsOn() || mStack.empty() || level > static_cast<std::int32_t>(mStack.size())) return;
        if (level > 0) mStack.resize(static_cast<std::size_t>(level));
        mStack.pop_back();
    }
    void Fail() {
        switch (mInput.Below(5)) {
            case 0:
                mDesktop.FailCall("CreateFile", 1, 5);
                break;
            case 1:
                mDesktop.FailCall("WriteFile", 1 + mInput.Below(4), 112);
                break;
            case 2:
                mDesktop.logFiles.freeBytes = mInput.Byte();
                break;
            case 3:
                mDesktop.logFiles.memoryIsShort = mInput.Flag();
                break;
            default:
                mDesktop.faults.Clear();
                mDesktop.logFiles.freeBytes = UINT64_MAX;
                break;
        }
    }
    void Write() {
        const Text text = mInput.Text();
        const bool indent = mInput.Flag();
        const bool save = mInput.Flag();
        // A file that cannot be written is closed, and only later lines go to the ring.
        const bool inRing = mTrace.Ring().Exists() && mDesktop.logFiles.OpenFiles() == 0;
        mTrace.KWO_TraceWrite(text, indent, save);
        if (!inRing || !save || mTrace.Ring().Size() == 0) return;
        const auto& ring = mTrace.Ring();
        const std::int32_t last = ring.WriteIndex() == 1 ? ring.Size() : ring.WriteIndex() - 1;
        const TextView entry = ring.Slot(last);
        KWO_HOLDS(entry.ends_with(u"\r\n"));
        if (text.find(u"\r\n") == Text::npos) KWO_HOLDS(entry.ends_with(text + u"\r\n"));
    }
    void CheckStack() {
        KWO_HOLDS(mTrace.Stack().Depth() == static_cast<std::int32_t>(mStack.size()));
        for (std::size_t at = 0; at < mStack.size(); ++at) {
            const CallStack::Level& level = mTrace.Stack().At(static_cast<std::int32_t>(at) + 1);
            KWO_HOLDS(level.routine == mStack[at].first && level.traced == mStack[at].second);
        }
        KWO_HOLDS(mTrace.KWO_CurrentRoutine() == (mStack.empty() ? Text() : mStack.back().first));
    }
    static void CheckLines(std::string_view content) {
        while (!content.empty()) {
            const std::size_t end = content.find("\r\n");
            KWO_HOLDS(end != std::string_view::npos);
            KWO_HOLDS(BeginsAsALine(content.substr(0, end)));
            content.remove_prefix(end + 2);
        }
    }

    fuzz::Input& mInput;
    platform::simulated::SimulatedDesktop mDesktop;
    component::Component mComponent{mDesktop.Services()};
    Trace& mTrace = mComponent.trace;
    std::vector<std::pair<Text, bool>> mStack;
    std::vector<Text> mNames;
};

KWO_FUZZ_TARGET(trace) {
    constexpr int kMostSteps = 60;
    Session session(input);
    for (int step = 0; step < kMostSteps && !input.IsEmpty(); ++step)
        session.Step();
    session.End();
}

}  // namespace
}  // namespace kwo::frame
