#pragma once

#include <windows.h>
#include <oleauto.h>

#include "kwoinit/message_file.h"

namespace kwo::kwoinit {

/// Raises ComponentError when `array` is not one of one dimension with elements of the type `element`.
SAFEARRAY* CheckedArray(SAFEARRAY** array, VARTYPE element, platform::TextView name);

/// Every element becomes the text of its index, empty where there is none.
void FillTexts(SAFEARRAY* array, const MessageFile::Texts& texts);

/// One element for each of `textArray`, the same index for the first, 1 where there is a text and 0 where there is
/// none. An array of fixed size, or one that is in use, stays as it is.
void FillIndex(SAFEARRAY* array, SAFEARRAY* textArray);

}  // namespace kwo::kwoinit
