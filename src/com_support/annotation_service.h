#pragma once

#include <windows.h>

#include <functional>
#include <memory>
#include <string>

namespace kwo::com_support {

/// Something that a component tells screen readers about a window.
struct Annotated {
    HWND window = nullptr;
    /// The part of the window (OBJID_).
    DWORD object = 0;
    DWORD child = 0;
    /// "Role", "State", "Name", "Value", "Description", "KeyboardShortcut", "DefaultAction"; "Other" for any other.
    std::wstring property;
    /// A text as it is, a number in decimal digits.
    std::wstring value;
    /// Taken away. There is one of these for each property.
    bool isCleared = false;
};

/// Takes the place of the system's annotation service (CLSID_AccPropServices) in the apartment of the calling thread.
/// Components that look for the service find this one, and `heard` is told what they tell. It tells no reader.
///
///     const AnnotationService service([](const Annotated& told) { ...; return S_OK; });
class AnnotationService {
public:
    /// What `heard` returns is the result of the component's call. If it raises std::bad_alloc, that is E_OUTOFMEMORY;
    /// it must raise nothing else.
    using Heard = std::function<HRESULT(const Annotated&)>;

    explicit AnnotationService(Heard heard);
    /// No component may hold it any more.
    ~AnnotationService();
    AnnotationService(const AnnotationService&) = delete;
    AnnotationService& operator=(const AnnotationService&) = delete;

    /// How often a component has looked for it.
    int Created() const;
    /// How many references components hold.
    ULONG Held() const;

private:
    class Server;
    std::unique_ptr<Server> mServer;
    DWORD mRegistration = 0;
};

}  // namespace kwo::com_support
