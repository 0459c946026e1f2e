#include <kova/KProfiler.h>
#include <zelvane/executor/TypeTranslationPreview.h>

namespace ZelvaneGraph::Executor {

TypeTranslationPreview::TypeTranslationPreview(const Orsel::String& tableName)
    : tableName_(tableName),
      profilerCategory_(KProfiler::addCategory(tableName_.c_str(), "Zelvane type translation")) {}

TypeTranslationPreview::~TypeTranslationPreview() = default;

} // namespace ZelvaneGraph::Executor
