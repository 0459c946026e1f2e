#include "InjectedFailure.h"

#include <kova/KArrayStats.h>
#include <orsel/ArrayMemory.h>

LiveArrays::LiveArrays()
    : graphBuffers_(Orsel::ArrayStats::liveBuffers()), graphBytes_(Orsel::ArrayStats::liveBytes()),
      hostBuffers_(KArrayStats::liveBuffers()), hostBytes_(KArrayStats::liveBytes()) {}

::testing::AssertionResult LiveArrays::unchanged() const {
    const std::size_t graphBuffers = Orsel::ArrayStats::liveBuffers();
    const std::size_t graphBytes = Orsel::ArrayStats::liveBytes();
    const std::size_t hostBuffers = KArrayStats::liveBuffers();
    const std::size_t hostBytes = KArrayStats::liveBytes();
    if (graphBuffers == graphBuffers_ && graphBytes == graphBytes_ && hostBuffers == hostBuffers_ &&
        hostBytes == hostBytes_) {
        return ::testing::AssertionSuccess();
    }
    return ::testing::AssertionFailure()
           << "graph arrays " << graphBuffers_ << " (" << graphBytes_ << " bytes) before, "
           << graphBuffers << " (" << graphBytes << " bytes) after; host arrays " << hostBuffers_
           << " (" << hostBytes_ << " bytes) before, " << hostBuffers << " (" << hostBytes
           << " bytes) after";
}
