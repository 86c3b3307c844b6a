// The second example of docs/trace.md.
#include "frame/call_trace.h"
#include "frame/text_routines.h"

namespace kwo::frame {

void AddAlarm(CallTrace& trace, std::int64_t ms) {
    //@example
}

}  // namespace kwo::frame
