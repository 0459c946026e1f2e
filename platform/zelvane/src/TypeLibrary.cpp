#include <zelvane/Object.h>
#include <zelvane/TypeLibrary.h>
#include <zelvane/file/SceneInfo.h>
#include <zelvane/geometry/GraphTransforms.h>
#include <zelvane/simulation/Time.h>

namespace Zelvane {

namespace {

Orsel::Type recordType(const char* name) {
    return Orsel::Type::named(name, Orsel::TypeKind::Record);
}

} // namespace

namespace Simulation {

const Orsel::Type& timeType() {
    static const Orsel::Type type = recordType("Simulation::Time");
    return type;
}

} // namespace Simulation

namespace Geometry::Transform {

const Orsel::Type& graphTransformsType() {
    static const Orsel::Type type = recordType("Geometry::Transform::GraphTransforms");
    return type;
}

} // namespace Geometry::Transform

namespace File::Project {

const Orsel::Type& sceneInfoType() {
    static const Orsel::Type type = recordType("File::Project::SceneInfo");
    return type;
}

} // namespace File::Project

Orsel::Library& typeLibrary() {
    static Orsel::Library library;
    static const bool populated = [] {
        library.registerType(objectType());
        library.registerType(Simulation::timeType());
        library.registerType(Geometry::Transform::graphTransformsType());
        library.registerType(File::Project::sceneInfoType());
        for (auto kind = static_cast<int>(Orsel::TypeKind::Bool);
             kind <= static_cast<int>(Orsel::TypeKind::Float4x4); ++kind) {
            library.registerType(Orsel::Type::builtin(static_cast<Orsel::TypeKind>(kind)));
        }
        return true;
    }();
    (void)populated;
    return library;
}

} // namespace Zelvane
