#include "FuzzHost.h"

#include "FuzzCheck.h"

#include <board/BoardExecutor.h>
#include <board/BoardNode.h>
#include <dlfcn.h>
#include <kova/KMessageSink.h>
#include <kova/KPluginLoader.h>
#include <kova/KScene.h>
#include <memory>
#include <orsel/ArrayMemory.h>

namespace ZelFuzz {
namespace {

// Bad inputs make the host report a great deal; none of it is of use while fuzzing.
class DiscardingSink : public KMessageSink {
public:
    void message(Severity, const KString&) override {}
};

} // namespace

void setUpHost() {
    static const bool done = [] {
        KMessages::setSink(std::make_shared<DiscardingSink>());
        KScene::reset();
        const KObject module = KPluginLoader::registerModule("zelvaneBoard");
        check(!module.isNull() && ZelvaneBoard::registerBoardTypes(module) &&
                  ZelvaneBoard::BoardExecutor::bind(PLUGIN_PATH),
              "the host cannot bind the plug-in");
        // Graph arrays must come from the allocator AddressSanitizer watches.
        check(!Orsel::ArrayMemory::usesScalableAllocator(), "graph arrays bypass the sanitizers");
        return true;
    }();
    (void)done;
}

void* pluginLibrary() {
    return dlopen(PLUGIN_PATH, RTLD_NOW | RTLD_NOLOAD);
}

} // namespace ZelFuzz
