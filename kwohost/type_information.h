#pragma once

#include <string>
#include <vector>

#include "com_values.h"

namespace kwohost {

struct DescribedMember {
    DISPID id;
    const wchar_t* name;
    bool isMethod;
    bool isAssignable;
};

/// The description of a dispatch interface of that name; null when the system cannot make one.
ComPtr<ITypeInfo> MakeTypeInformation(const wchar_t* name, const std::vector<DescribedMember>& members);

}  // namespace kwohost
