#include "controls/month_form.h"

#include "platform/component_error.h"

namespace kwo::controls {

using platform::Argument;

bool MonthForm::RefusesMonth(Date day) const {
    const CalendarDay asked = DayOf(day);
    Argument arguments[] = {{mBox.Object()}, {asked.month, false}, {asked.year, false}, {false}};
    return Refuses(u"OnChangeMonth", arguments);
}

bool MonthForm::RefusesDate(Date date) const {
    // Intended: sent even if notifications are off; the switch is for months only.
    Argument arguments[] = {{mBox.Object()}, {date}, {false}};
    return Refuses(u"OnChangeDate", arguments);
}

bool MonthForm::Refuses(TextView procedure, std::span<Argument> arguments) const {
    if (mForm == nullptr) return false;
    try {
        mForm->Notify(procedure, arguments);
        return mConversions.ToBoolean(arguments.back().value);
    } catch (const platform::ComponentError&) {
        return false;
    }
}

}  // namespace kwo::controls
