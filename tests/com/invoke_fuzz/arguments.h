#pragma once

#include <windows.h>
#include <oleauto.h>

#include <deque>
#include <functional>
#include <vector>

#include "random.h"

namespace kwo::invoke_fuzz {

/// What the values of one call may be made of.
struct Ingredients {
    std::function<IDispatch*()> object;  ///< one of the host or of the component, without a reference; may be null
    LONG key = 0;                        ///< an open registry key
    double day = 0;
};

/// A value of any automation type that owns what it holds; now and then of a type that is none, which owns nothing.
VARIANT AnyValue(Random& random, const Ingredients& from);

/// Whether a variable may hold this: a type that automation knows, without a reference, that can be freed.
bool IsValid(const VARIANT& value);

/// The arguments of one call, the last one first, with the variables that they refer to. Frees everything at its end.
class Arguments {
public:
    Arguments() = default;
    Arguments(const Arguments&) = delete;
    Arguments& operator=(const Arguments&) = delete;
    ~Arguments();

    /// Adds a value, or a reference to a variable, or a reference to a variable that is a reference, and so on.
    void AddAny(Random& random, const Ingredients& from);
    /// Adds a value as it stands, which is owned from now on.
    void Add(const VARIANT& value) { mValues.push_back(value); }
    /// The caller's program changes one of its variables while the call runs.
    void ChangeOne(Random& random, const Ingredients& from);
    /// All variables hold what a variable may hold.
    bool AreValid() const;

    VARIANT* Data() { return mValues.empty() ? nullptr : mValues.data(); }
    UINT Count() const { return static_cast<UINT>(mValues.size()); }

private:
    struct Variable {
        VARIANT value;
        bool isTyped;  ///< the reference to it says which type it has, so that it keeps it
    };

    VARIANT Reference(Random& random, const Ingredients& from, int depth);

    // What references point to must not move.
    std::vector<VARIANT> mValues;
    std::deque<Variable> mVariables;
    std::deque<VARIANT> mReferences;  ///< variables that hold references, which own nothing
};

}  // namespace kwo::invoke_fuzz
