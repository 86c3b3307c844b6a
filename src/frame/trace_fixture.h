#pragma once

#include <gtest/gtest.h>

#include <cmath>
#include <string>
#include <string_view>
#include <vector>

#include "component/component.h"
#include "platform/simulated/simulated_desktop.h"

namespace kwo::frame {

/// A component on a simulated desktop at 2026-11-16 10:04:31, whose trace the tests start.
class TraceTest : public testing::Test {
protected:
    using Lines = std::vector<std::string>;

    static constexpr double kDay = 46342;  // 2026-11-16
    static constexpr TextView kLogPath = u"C:\\Program Files\\Host\\HOSTAPP.log";
    static constexpr TextView kSecondPath = u"C:\\Program Files\\Host\\HOSTAPP1.log";
    inline static const std::string kRule = std::string(60, '=');
    static constexpr std::string_view kHeader =
        "10:04:31 000.00  Trace Log started for HOSTAPP 4.1.11 Process ID=1234, UserId=jdoe, Machine=PC01";
    static constexpr std::int32_t kDiskFull = 112;

    TraceTest() {
        SetTime(10, 4, 31);
        desktop.errors.system[5] = u"Access is denied.\r\n";
        desktop.errors.system[kDiskFull] = u"There is not enough space on the disk.\r\n";
    }

    void SetTime(int hours, int minutes, int seconds, double day = kDay) {
        desktop.clock.SetNow({day + (hours * 3600 + minutes * 60 + seconds) / 86400.0});
    }
    /// Milliseconds with four decimals.
    void Pass(double ms) { desktop.Advance(platform::Milliseconds{std::llround(ms * 10'000)}); }

    void StartFile(bool trackMemory = false) { trace.KWO_TraceStart(0, 0, trackMemory); }
    void StartRing(std::int32_t size) { trace.KWO_TraceStart(0, size, false); }
    void Note(TextView text) { trace.KWO_TraceWrite(text, false, true); }

    std::string Content(TextView path = kLogPath) {
        const std::string* const content = desktop.logFiles.Content(path);
        return content == nullptr ? "<no file>" : *content;
    }
    /// The lines of a file without the two characters at their ends.
    Lines File(TextView path = kLogPath) {
        Lines lines;
        std::string content = Content(path);
        for (std::size_t end; (end = content.find("\r\n")) != std::string::npos; content.erase(0, end + 2))
            lines.push_back(content.substr(0, end));
        if (!content.empty()) lines.push_back("<no line end>" + content);
        return lines;
    }
    /// What was written since the start of the file: without the day and the header.
    Lines Entries() {
        Lines lines = File();
        if (lines.size() < 2) return {"<no header>"};
        lines.erase(lines.begin(), lines.begin() + 2);
        return lines;
    }
    std::string Slot(std::int32_t index) { return desktop.conversions.ToAnsi(trace.Ring().Slot(index)); }
    /// The prompts of the boxes shown.
    Lines Boxes() { return desktop.log.Starting("Ask"); }

    platform::simulated::SimulatedDesktop desktop;
    component::Component component{desktop.Services()};
    Trace& trace = component.trace;
};

}  // namespace kwo::frame
