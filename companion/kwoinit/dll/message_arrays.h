#pragma once

#include <windows.h>
#include <oleauto.h>

#include "kwoinit/message_file.h"

namespace kwo::kwoinit {

/// The array, which stays the caller's.
/// Raises BadArray unless it is there, has one dimension and elements of the type `element`. `name` is the argument's
/// name, for the description.
SAFEARRAY* CheckedArray(SAFEARRAY** array, VARTYPE element, platform::TextView name);

/// Sets each element to the text of its index, or to an empty text.
/// Frees the texts that were there.
/// Raises BadArray if the array cannot be accessed.
void FillTexts(SAFEARRAY* array, const MessageFile::Texts& texts);

/// Gives `array` the bounds of `textArray`, at most 32,767 elements, and sets each element to 1 if there is a text,
/// else to 0.
/// An array of fixed size, or one in use, is not changed: the index is only for callers that want it.
void FillIndex(SAFEARRAY* array, SAFEARRAY* textArray);

}  // namespace kwo::kwoinit
