// How a file is to be opened and what others are denied meanwhile. A plain
// value; nothing here acts on it.
#pragma once

class LxAccessPermission {
public:
    enum Access { kAccessRead, kAccessWrite, kAccessReadWrite };
    enum Deny { kDenyNone, kDenyRead, kDenyWrite, kDenyReadWrite };

    LxAccessPermission() = default;
    LxAccessPermission(Access access, Deny deny) : access_(access), deny_(deny) {}
    LxAccessPermission(const LxAccessPermission&) = default;
    LxAccessPermission& operator=(const LxAccessPermission&) = default;

    Access GetAccess() const { return access_; }
    Deny GetDeny() const { return deny_; }

    bool operator==(const LxAccessPermission& other) const
    {
        return access_ == other.access_ && deny_ == other.deny_;
    }
    bool operator!=(const LxAccessPermission& other) const { return !(*this == other); }

private:
    Access access_ = kAccessRead;
    Deny deny_ = kDenyNone;
};
