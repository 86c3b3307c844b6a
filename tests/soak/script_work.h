#pragma once

#include <memory>
#include <string>

namespace kwo::soak {

/// A script of one engine whose handlers and callbacks raise errors, in its own host.
class FailingScript {
public:
    /// `name` is such as "failing.vbs". Runs its main part.
    explicit FailingScript(const std::wstring& name);
    FailingScript(const FailingScript&) = delete;
    FailingScript& operator=(const FailingScript&) = delete;
    /// Lets the script give its objects back and closes it. It must have raised each of its errors once.
    ~FailingScript();

private:
    struct Parts;
    std::unique_ptr<Parts> mParts;
};

}  // namespace kwo::soak
