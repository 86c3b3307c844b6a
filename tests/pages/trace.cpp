// The first example of docs/trace.md.
#include "component/component.h"

void DoTheWork();

void Traced(kwo::component::Component& component) {
    //@example
}
