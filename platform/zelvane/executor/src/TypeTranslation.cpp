#include <zelvane/executor/TypeTranslation.h>

namespace ZelvaneGraph::Executor {

TypeTranslation::~TypeTranslation() = default;

void TypeTranslation::getSupportedTypes(const Orsel::Library& library,
                                        Orsel::EntityIndexedList<Orsel::Type>& types) const {
    Orsel::Array<Orsel::String> names;
    getSupportedTypeNames(names);
    for (const Orsel::String& name : names) {
        if (const Orsel::Type* type = library.findType(name)) {
            types.append(*type);
        }
    }
}

bool TypeTranslation::translateInputValue(const Orsel::Type&, Orsel::Value&,
                                          const HostPortContext&) const {
    return false;
}

bool TypeTranslation::translateOutputData(const Orsel::Value&, const HostPortContext&) const {
    return false;
}

void TypeTranslation::portRemoved(const Orsel::String&, const Orsel::String&) {}

void TypeTranslation::portRenamed(const Orsel::String&, const Orsel::String&,
                                  const Orsel::String&) {}

bool TypeTranslation::translateOutputValue(const Orsel::Value&, const HostPortContext&) const {
    return false;
}

} // namespace ZelvaneGraph::Executor
