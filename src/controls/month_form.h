#pragma once

#include <span>

#include "controls/month_dates.h"
#include "controls/picture_box.h"
#include "platform/component_error.h"

namespace kwo::controls {

/// The form of a calendar's picture box.
/// It is asked before the month or the selection changes, and may refuse.
///
/// A form that lacks the procedure, or whose procedure fails, refuses nothing; its error is lost. The form's procedure
/// may call the calendar again: read fields again afterwards.
class MonthForm {
public:
    /// Keeps references to both; they must outlive it.
    MonthForm(const PictureBox& box, platform::Conversions& conversions) : mBox(box), mConversions(conversions) {}

    /// Sets the form; null for none, which refuses nothing. Releasing the old form may run code of the host.
    void Assign(HostObjectRef form) { mForm = std::move(form); }
    /// Calls "OnChangeMonth" with the month and year of `day`.
    /// True if the form sets Cancel to something that counts as true.
    /// Raises InvalidProcedureCall for a day outside the calendar.
    bool RefusesMonth(Date day) const;
    /// Calls "OnChangeDate". True if the form sets Cancel. What the form writes into the date does not count.
    bool RefusesDate(Date date) const;

private:
    /// The last argument is Cancel. Without a form, and after an error, nothing is refused.
    bool Refuses(TextView procedure, std::span<platform::Argument> arguments) const;

    const PictureBox& mBox;
    platform::Conversions& mConversions;
    /// Null while there is no form.
    HostObjectRef mForm;
};

inline bool MonthForm::RefusesMonth(Date day) const {
    const CalendarDay asked = DayOf(day);
    platform::Argument arguments[] = {{mBox.Object()}, {asked.month, false}, {asked.year, false}, {false}};
    return Refuses(u"OnChangeMonth", arguments);
}

inline bool MonthForm::RefusesDate(Date date) const {
    // Intended: sent even if notifications are off; the switch is for months only.
    platform::Argument arguments[] = {{mBox.Object()}, {date}, {false}};
    return Refuses(u"OnChangeDate", arguments);
}

inline bool MonthForm::Refuses(TextView procedure, std::span<platform::Argument> arguments) const {
    if (mForm == nullptr) return false;
    try {
        mForm->Notify(procedure, arguments);
        return mConversions.ToBoolean(arguments.back().value);
    } catch (const platform::ComponentError&) {
        return false;
    }
}

}  // namespace kwo::controls
