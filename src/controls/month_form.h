#pragma once

#include <span>

#include "controls/month_dates.h"
#include "controls/picture_box.h"

namespace kwo::controls {

/// The form of a calendar's picture box. It is asked before the month or the selection changes, and may refuse. A form
/// that lacks the procedure, or whose procedure fails, refuses nothing.
///
/// The form's procedure may call the calendar again.
class MonthForm {
public:
    /// Keeps references to both; they must outlive it.
    MonthForm(const PictureBox& box, platform::Conversions& conversions) : mBox(box), mConversions(conversions) {}

    /// Sets the form; null for none.
    void Assign(HostObjectRef form) { mForm = std::move(form); }
    /// Calls "OnChangeMonth" with the month and year of `day`. True if the form sets Cancel.
    bool RefusesMonth(Date day) const;
    /// Calls "OnChangeDate". True if the form sets Cancel.
    bool RefusesDate(Date date) const;

private:
    bool Refuses(TextView procedure, std::span<platform::Argument> arguments) const;

    const PictureBox& mBox;
    platform::Conversions& mConversions;
    HostObjectRef mForm;
};

}  // namespace kwo::controls
