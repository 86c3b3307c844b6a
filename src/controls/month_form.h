#pragma once

#include <span>

#include "controls/month_dates.h"
#include "controls/picture_box.h"

namespace kwo::controls {

/// The form of a calendar's picture box. It is asked before the month or the selection changes and may refuse. A form
/// without the procedure, or whose procedure fails, refuses nothing.
///
/// While it is asked, the form may call the calendar again.
class MonthForm {
public:
    MonthForm(const PictureBox& box, platform::Conversions& conversions) : mBox(box), mConversions(conversions) {}

    void Assign(HostObjectRef form) { mForm = std::move(form); }
    /// Calls "OnChangeMonth" with the day's month.
    bool RefusesMonth(Date day) const;
    /// Calls "OnChangeDate".
    bool RefusesDate(Date date) const;

private:
    bool Refuses(TextView procedure, std::span<platform::Argument> arguments) const;

    const PictureBox& mBox;
    platform::Conversions& mConversions;
    HostObjectRef mForm;
};

}  // namespace kwo::controls
