// The first example of docs/trace.md.
#include "frame/component.h"

void DoTheWork();

void Traced(kwo::frame::Component& component) {
//@example
}
