#pragma once

#include <zelvane/executor/TypeTranslation.h>

namespace ZelvaneGraph::Executor {

// Base class of translations in this release of the executor: carries the translation's
// table name, which is also the host profiler category its work is reported under.
class ZELVANE_EXECUTOR_API TypeTranslationPreview : public TypeTranslation {
public:
    explicit TypeTranslationPreview(const Orsel::String& tableName);
    ~TypeTranslationPreview() override;

    const Orsel::String& tableName() const { return tableName_; }
    int profilerCategory() const { return profilerCategory_; }

private:
    Orsel::String tableName_;
    int profilerCategory_;
};

} // namespace ZelvaneGraph::Executor
