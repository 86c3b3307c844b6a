#pragma once

#include "com_support/type_description.h"
#include "com_test.h"
#include "golden_members.h"

namespace kwo::com_test {

/// The type library embedded in the DLL, read from the file without registering anything.
ComPtr<ITypeLib> TypeLibraryOfTheDll();

/// What the type library says, in the words of the hand-typed list: one line per accessor, in slot order.
std::vector<std::string> DumpInterface(ITypeInfo* dispatchInfo);
std::vector<std::string> DumpEvents(ITypeInfo* dispatchInfo);
std::vector<std::string> DumpEnumeration(ITypeInfo* info);
/// "KWOTimer creatable default _KWOTimer source __KWOTimer"
std::string DumpClass(ITypeInfo* info);

/// The description of one type of the library by its name; null when there is none.
ComPtr<ITypeInfo> TypeInfoOf(ITypeLib* library, const std::wstring& name);
std::string NameOf(ITypeInfo* info);

/// The interface with the slots behind a dual interface's dispatch view.
ComPtr<ITypeInfo> SlotView(ITypeInfo* dispatchInfo);

using com_support::FunctionDescription;
using com_support::TypeAttributes;

/// One function of an interface.
class Function : public FunctionDescription {
public:
    Function(ITypeInfo* info, UINT index) : FunctionDescription(*info, index), mInfo(info) {}

    bool IsPut() const { return ((*this)->invkind & (INVOKE_PROPERTYPUT | INVOKE_PROPERTYPUTREF)) != 0; }
    /// True when the last parameter is the result.
    bool HasResult() const;
    /// The arguments a caller writes: without the result and, for a put, without the new value.
    UINT ArgumentCount() const;
    /// The method's name first, then the arguments'.
    std::vector<std::string> Names() const;

private:
    ITypeInfo* mInfo;
};

}  // namespace kwo::com_test
