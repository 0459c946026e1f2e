#pragma once

#include <cstdint>
#include <kova/KExport.h>
#include <kova/KStatus.h>
#include <string_view>

// Lets a test (or the command line) make named host operations fail, so that every failure
// path of a caller can be driven. Operation names are "Class::method", e.g.
// "KFnMesh::getVertices". A host operation asks shouldFail(name) on entry and, when told to,
// returns failure(name): kFailure with the description "injected failure: <name>".
//
// Cost: while nothing has been armed and counting is off, shouldFail is one relaxed atomic
// load. From the first arming (or setCounting(true)) until reset(), every shouldFail call
// takes a mutex and is counted per operation, armed or not.
//
// Thread-safe: any thread may arm, reset and check at any time.
class KOVA_API KFailureInjection {
public:
    // The next `times` calls of `operation` fail, later ones succeed.
    static void failNext(std::string_view operation, int times = 1);
    // Every call of `operation` fails until reset.
    static void failAlways(std::string_view operation);
    // The first `successes` calls succeed, the one after fails, later ones succeed again.
    static void failAfter(std::string_view operation, int successes);
    // Counts calls of every operation without making any fail.
    static void setCounting(bool counting);

    // Arms from a text: comma-separated terms "op" (fail next once), "op:next=N",
    // "op:always" or "op:after=N". Fails with kInvalidParameter, arming nothing, when a term
    // is malformed.
    static KStatus configure(std::string_view description);

    // Disarms everything, zeroes the counts and turns counting off.
    static void reset();
    // How often shouldFail(operation) ran since the last reset while armed or counting.
    static int64_t callCount(std::string_view operation);

    static bool shouldFail(const char* operation);
    static KStatus failure(std::string_view operation);
};
