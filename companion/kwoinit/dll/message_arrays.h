#pragma once

#include <windows.h>
#include <oleauto.h>

#include "kwoinit/message_file.h"

namespace kwo::kwoinit {

/// The array. Raises ComponentError unless it has one dimension and elements of the type `element`.
SAFEARRAY* CheckedArray(SAFEARRAY** array, VARTYPE element, platform::TextView name);

/// Sets each element to the text of its index, or to an empty text.
void FillTexts(SAFEARRAY* array, const MessageFile::Texts& texts);

/// Gives `array` the bounds of `textArray` and sets each element to 1 if there is a text, else to 0. An array of fixed
/// size, or one in use, is not changed.
void FillIndex(SAFEARRAY* array, SAFEARRAY* textArray);

}  // namespace kwo::kwoinit
