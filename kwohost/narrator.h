#pragma once

#include <windows.h>

#include <map>
#include <string>

#include "com_support/annotation_service.h"
#include "output.h"

namespace kwohost {

/// Writes what components tell screen readers, a line for each thing that is new:
///
///     reader: role push button
///     reader: Today: shortcut Alt+T
///
/// A line begins with the name of the window, as soon as it has one. It takes the place of the system's annotation
/// service in the thread's apartment, so that real readers are told nothing.
class Narrator {
public:
    /// The output must outlive it. The thread must be in an apartment of its own (STA) until it ends.
    explicit Narrator(Output& output);

private:
    HRESULT Hear(const kwo::com_support::Annotated& told);

    Output& mOutput;
    std::map<HWND, std::wstring> mNames;
    kwo::com_support::AnnotationService mService;
};

}  // namespace kwohost
