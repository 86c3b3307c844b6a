#pragma once

#include <string>
#include <vector>

#include "com_values.h"

namespace kwohost {

/// One member of a described type.
/// A property that is assignable can be assigned by value.
/// `name` must live until MakeTypeInformation returns. All values are variants.
struct DescribedMember {
    DISPID id;
    const wchar_t* name;
    bool isMethod;
    bool isAssignable;
};

/// The description of a dispatch interface of that name; null if the system cannot make one.
/// Components ask for the name, to know a picture box from other objects.
ComPtr<ITypeInfo> MakeTypeInformation(const wchar_t* name, const std::vector<DescribedMember>& members);

}  // namespace kwohost
