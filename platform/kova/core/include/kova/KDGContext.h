#pragma once

#include <kova/KExport.h>
#include <kova/KTime.h>

// The context an evaluation runs in: the normal context (the scene's current state) or a
// given time.
class KOVA_API KDGContext {
public:
    // The normal context.
    KDGContext() = default;
    explicit KDGContext(const KTime& time) : time_(time), normal_(false) {}

    bool isNormal() const { return normal_; }
    // The context's time; for the normal context, time 0.
    KTime getTime() const { return time_; }

    static const KDGContext fsNormal;

private:
    KTime time_{0.0};
    bool normal_ = true;
};
