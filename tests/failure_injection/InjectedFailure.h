#pragma once

#include <concepts>
#include <cstddef>
#include <gtest/gtest.h>
#include <kova/KFailureInjection.h>
#include <ostream>
#include <string>

// One host operation made to fail: the call that follows `successes` successful calls of it.
struct Injection {
    const char* operation;
    int successes = 0;

    // Runs `step` with the failure armed, checks that the failing call was made, disarms every
    // failure and gives back what `step` gave.
    template <class Step>
    auto during(Step step) const {
        KFailureInjection::failAfter(operation, successes);
        auto result = step();
        EXPECT_GT(KFailureInjection::callCount(operation), successes) << operation << " not called";
        KFailureInjection::reset();
        return result;
    }
};

// The buffers held by graph arrays and by host arrays when it was made. Compared again after
// a failing conversion has been dropped, it shows whether any array made on the way leaked.
class LiveArrays {
public:
    LiveArrays();
    ::testing::AssertionResult unchanged() const;

private:
    std::size_t graphBuffers_;
    std::size_t graphBytes_;
    std::size_t hostBuffers_;
    std::size_t hostBytes_;
};

// A row of a failure table, named after the branch it drives (letters and digits only).
struct FailureRow {
    const char* name;
};

// Rows print as their names in test output.
template <std::derived_from<FailureRow> Row>
void PrintTo(const Row& row, std::ostream* out) {
    *out << row.name;
}

// Names the tests of a table after their rows.
struct RowName {
    template <class Info>
    std::string operator()(const Info& info) const {
        return info.param.name;
    }
};
