#include "builtin/BuiltInTypes.h"

#include "detail/NodeType.h"

namespace kova::builtin {

std::vector<std::shared_ptr<detail::NodeType>> makeBuiltInTypes() {
    std::vector<std::shared_ptr<detail::NodeType>> types{
        makeTimeType(),          makeTransformType(), makeObjectSetType(),
        makeShadingEngineType(), makeLambertType(),   makeDisplayShapeType()};
    for (const auto& type : types) {
        type->builtIn = true;
    }
    return types;
}

} // namespace kova::builtin
