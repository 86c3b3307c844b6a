#pragma once

#include "com_support/bstr.h"
#include "com_support/com_ptr.h"
#include "platform/text.h"

// The names of this folder and of its users for text and for what automation makes of it.
namespace kwo::com {

using com_support::Bstr;
using com_support::ComPtr;
using com_support::NewString;
using com_support::Replace;
using com_support::ToText;
using platform::Text;
using platform::TextView;

/// A truth value as automation passes it: -1 for true, 0 for false.
/// Callers may pass any other number; every one but 0 means true.
constexpr VARIANT_BOOL VariantBool(bool truth) {
    return truth ? VARIANT_TRUE : VARIANT_FALSE;
}

}  // namespace kwo::com
