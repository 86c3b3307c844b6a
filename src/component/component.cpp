#include "component/component.h"

namespace kwo::component {

Component::Component(const platform::Platform& services)
    : platform(services),
      identity(services.host),
      clock(services.clock),
      wait(services.messages, clock, identity),
      trace(services, identity, clock, error, messageBoxes),
      eventLog(services.eventLog, identity, trace, apiResult),
      messageBoxes(services.windows, services.screen, services.host, wait, eventLog, trace),
      error(services.errors, services.host, identity, trace, messageBoxes),
      routines(services.files, services.errors, identity, error),
      locale(services.locale, services.clock, services.errors, error, routines),
      messages(services, identity, routines, locale, apiResult, mProgramName),
      timers(services.timers, clock, services.clock, services.conversions, locale, services.host) {
    error.SetMessages(&messages);
}

}  // namespace kwo::component
