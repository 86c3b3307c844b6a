#pragma once

#include <vector>

#include "host_box.h"

namespace kwo::com_test {

/// A control of a form, with a place that `Move` changes.
class Pane : public MemberObject {
public:
    Pane(IDispatch* container, IDispatch* form, double left) {
        Property(L"Container", Var(container));
        Property(L"Parent", Var(form));
        const wchar_t* const names[] = {L"Left", L"Top", L"Width", L"Height"};
        const double place[] = {left, 0, 600, 3000};
        for (std::size_t at = 0; at < 4; ++at)
            Property(names[at], Var(place[at]));
        Method(L"Move", [this, names](Arguments& given, VARIANT*) {
            for (std::size_t at = 0; at < given.size(); ++at)
                values[names[at]] = Var(NumberIn(*given[at]));
            return S_OK;
        });
    }
    std::vector<double> Place() {
        return {NumberIn(values[L"Left"]), NumberIn(values[L"Top"]), NumberIn(values[L"Width"]),
                NumberIn(values[L"Height"])};
    }
};

}  // namespace kwo::com_test
