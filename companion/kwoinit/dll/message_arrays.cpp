#include "kwoinit/dll/message_arrays.h"

#include <algorithm>
#include <new>
#include <utility>

#include "com_support/bstr.h"
#include "com_support/owned_array.h"
#include "kwoinit/message_errors.h"

namespace kwo::kwoinit {

namespace {

constexpr TextView kSource = u"KWOInitialize.KWO_MsgTableLoad";
/// What a 16-bit index can count.
constexpr ULONG kLongestIndex = 32'767;

/// The elements of an array that must give access to them.
template <class Element>
class Elements : public com_support::ArrayElements<Element> {
public:
    explicit Elements(SAFEARRAY* array) : com_support::ArrayElements<Element>(array) {
        if (FAILED(this->Status())) Raise(MessageError::BadArray, kSource, u"An array cannot be accessed");
    }
};

bool IsOf(SAFEARRAY* array, VARTYPE element) {
    VARTYPE type = VT_EMPTY;
    return SUCCEEDED(::SafeArrayGetVartype(array, &type)) && type == element;
}

}  // namespace

SAFEARRAY* CheckedArray(SAFEARRAY** array, VARTYPE element, TextView name) {
    const auto refuse = [name](TextView reason) { Raise(MessageError::BadArray, kSource, Text(name) + Text(reason)); };
    if (array == nullptr || *array == nullptr) refuse(u" is no array: it must have been dimensioned");
    if ((*array)->cDims != 1) refuse(u" has more than one dimension");
    if (!IsOf(*array, element)) refuse(u" has elements of another type");
    return *array;
}

void FillTexts(SAFEARRAY* array, const MessageFile::Texts& texts) {
    const SAFEARRAYBOUND& bound = array->rgsabound[0];
    const Elements<BSTR> elements(array);
    for (ULONG at = 0; at < bound.cElements; ++at) {
        const std::int64_t number = std::int64_t{bound.lLbound} + at;
        const bool isNumber = number >= 1 && number <= kHighestNumber;
        const TextView text = isNumber ? texts[static_cast<std::int32_t>(number)] : TextView();
        com_support::Bstr fresh = text.empty() ? com_support::Bstr() : com_support::Bstr(text);
        std::swap(elements[at], *fresh.InOut());
    }
}

void FillIndex(SAFEARRAY* array, SAFEARRAY* textArray) {
    SAFEARRAYBOUND bound = textArray->rgsabound[0];
    bound.cElements = std::min(bound.cElements, kLongestIndex);
    if (bound.cElements == 0 || com_support::HasFixedBounds(*array)) return;
    const HRESULT sized = ::SafeArrayRedim(array, &bound);
    if (sized == E_OUTOFMEMORY) throw std::bad_alloc();
    if (FAILED(sized)) return;  // in use
    const Elements<SHORT> index(array);
    const Elements<BSTR> texts(textArray);
    for (ULONG at = 0; at < bound.cElements; ++at)
        index[at] = ::SysStringLen(texts[at]) != 0 ? 1 : 0;
}

}  // namespace kwo::kwoinit
