#include "CurveFormInference.h"
#include "IndexCompaction.h"
#include "NumberText.h"
#include "TextLines.h"

#include <algorithm>
#include <climits>
#include <kova/KString.h>
#include <kova_io/ObjReader.h>
#include <map>
#include <set>

namespace KovaIo {

namespace {

// Largest count of any one kind of element a file may declare: the host counts in int.
constexpr std::size_t kMaxElements = INT_MAX / 4;

// A failure found while reading: the line and the reason.
struct ObjError {
    std::size_t line;
    std::string reason;
};

// Faces and curves of one `o` block, indices into the file's global tables.
struct ObjObject {
    std::string name;
    std::vector<int> faceCounts;
    std::vector<int> fvPoint;
    std::vector<int> fvUV;         // -1: none
    std::vector<int> fvNormal;     // -1: none
    std::vector<int> faceGroups;   // into ObjReaderState::groupLists
    std::vector<int> faceMaterial; // into ObjReaderState::materials, -1: none
    std::vector<CurveRecord> curves;
};

// The curve statements seen since the last `end`.
struct PendingCurve {
    bool open = false;
    double u0 = 0.0;
    double u1 = 0.0;
    std::vector<int> cvs;
    std::vector<double> knots;
};

class ObjReaderState {
public:
    explicit ObjReaderState(const std::string& defaultName) {
        objects_.push_back(ObjObject{defaultName, {}, {}, {}, {}, {}, {}, {}});
        groupLists_.emplace_back();
    }

    // Reads one statement; an error stops the file.
    std::optional<ObjError> statement(std::size_t line, const std::vector<std::string_view>& t,
                                      std::string_view rest);
    std::optional<ObjError> finish(std::size_t lastLine);
    SceneData scene(std::vector<std::string> warnings) const;
    std::vector<std::string> warnings() const;

private:
    std::optional<ObjError> vertex(std::size_t line, const std::vector<std::string_view>& t);
    std::optional<ObjError> face(std::size_t line, const std::vector<std::string_view>& t);
    std::optional<ObjError> curve(std::size_t line, const std::vector<std::string_view>& t);
    std::optional<ObjError> endCurve(std::size_t line);
    MeshRecord mesh(const ObjObject& object) const;
    void skipped(const std::string& what) { ++skipped_[what]; }

    ObjObject& current() { return objects_.back(); }

    // Global tables.
    std::vector<double> positions_;            // x, y, z, w per `v`
    std::vector<float> pointFloats_;           // x, y, z per `v`, read as floats
    std::vector<float> colors_;                // r, g, b, a per `v`
    std::vector<unsigned char> colorChannels_; // 0, 3 or 4 per `v`
    std::vector<float> uvs_;                   // u, v per `vt`
    std::vector<float> normals_;               // x, y, z per `vn`

    std::vector<ObjObject> objects_;
    std::vector<std::vector<std::string>> groupLists_;
    int currentGroups_ = 0;
    std::vector<std::string> materials_;
    int currentMaterial_ = -1;

    std::string curveType_; // "bspline", "rat bspline", another type or empty
    int degree_ = 0;
    PendingCurve pending_;
    std::size_t pendingLine_ = 0;
    std::map<std::string, int> skipped_;
};

std::optional<ObjError> error(std::size_t line, std::string reason) {
    return ObjError{line, std::move(reason)};
}

// The 0-based element that OBJ index `token` names among `count` elements (negative indices
// count back from the latest one).
std::optional<int> resolveIndex(std::string_view token, std::size_t count) {
    const auto value = parseNumber<long long>(token);
    if (!value || *value == 0) {
        return std::nullopt;
    }
    const long long index = *value > 0 ? *value - 1 : static_cast<long long>(count) + *value;
    if (index < 0 || index >= static_cast<long long>(count)) {
        return std::nullopt;
    }
    return static_cast<int>(index);
}

std::string indexError(const char* what, std::string_view token, std::size_t count) {
    return std::string(what) + " index " + std::string(token) + " is out of range (" +
           std::to_string(count) + " defined so far)";
}

std::optional<ObjError> ObjReaderState::statement(std::size_t line,
                                                  const std::vector<std::string_view>& t,
                                                  std::string_view rest) {
    const std::string_view keyword = t[0];
    if (pending_.open && keyword != "parm" && keyword != "end" && keyword != "sp" &&
        keyword != "trim" && keyword != "hole" && keyword != "scrv") {
        return error(line, "'" + std::string(keyword) + "' inside a curve (missing 'end')");
    }
    if (keyword == "v") {
        return vertex(line, t);
    }
    if (keyword == "vt" || keyword == "vn") {
        const bool uv = keyword == "vt";
        const std::size_t minimum = uv ? 2 : 4;
        if (t.size() < minimum || t.size() > 4) {
            return error(line, "'" + std::string(keyword) + "' needs " +
                                   (uv ? "1 to 3 numbers" : "3 numbers"));
        }
        float values[3] = {0.0f, 0.0f, 0.0f};
        for (std::size_t i = 1; i < t.size(); ++i) {
            const auto value = parseNumber<float>(t[i]);
            if (!value) {
                return error(line, "bad number '" + std::string(t[i]) + "'");
            }
            values[i - 1] = *value;
        }
        std::vector<float>& table = uv ? uvs_ : normals_;
        table.insert(table.end(), values, values + (uv ? 2 : 3));
        if (table.size() / (uv ? 2 : 3) > kMaxElements) {
            return error(line, "too many '" + std::string(keyword) + "' entries");
        }
        return std::nullopt;
    }
    if (keyword == "f" || keyword == "fo") {
        return face(line, t);
    }
    if (keyword == "o") {
        const std::string name = rest.empty() ? objects_.front().name : std::string(rest);
        objects_.push_back(ObjObject{name, {}, {}, {}, {}, {}, {}, {}});
        return std::nullopt;
    }
    if (keyword == "g") {
        std::vector<std::string> names(t.begin() + 1, t.end());
        std::sort(names.begin(), names.end());
        names.erase(std::unique(names.begin(), names.end()), names.end());
        const auto found = std::find(groupLists_.begin(), groupLists_.end(), names);
        currentGroups_ = static_cast<int>(found - groupLists_.begin());
        if (found == groupLists_.end()) {
            groupLists_.push_back(std::move(names));
        }
        return std::nullopt;
    }
    if (keyword == "usemtl") {
        if (rest.empty()) {
            currentMaterial_ = -1;
            return std::nullopt;
        }
        const auto found = std::find(materials_.begin(), materials_.end(), rest);
        currentMaterial_ = static_cast<int>(found - materials_.begin());
        if (found == materials_.end()) {
            materials_.emplace_back(rest);
        }
        return std::nullopt;
    }
    if (keyword == "cstype") {
        curveType_.clear();
        for (std::size_t i = 1; i < t.size(); ++i) {
            curveType_ += (i > 1 ? " " : "") + std::string(t[i]);
        }
        return std::nullopt;
    }
    if (keyword == "deg") {
        const auto value = t.size() >= 2 ? parseNumber<int>(t[1]) : std::nullopt;
        if (!value || *value < 1 || *value > 15) {
            return error(line, "'deg' needs a degree from 1 to 15");
        }
        degree_ = *value;
        return std::nullopt;
    }
    if (keyword == "curv") {
        return curve(line, t);
    }
    if (keyword == "parm") {
        if (!pending_.open) {
            return error(line, "'parm' outside a curve");
        }
        if (t.size() < 2 || t[1] != "u") {
            return error(line, "curves take 'parm u' only");
        }
        for (std::size_t i = 2; i < t.size(); ++i) {
            const auto value = parseNumber<double>(t[i]);
            if (!value) {
                return error(line, "bad knot '" + std::string(t[i]) + "'");
            }
            pending_.knots.push_back(*value);
        }
        return std::nullopt;
    }
    if (keyword == "end") {
        return endCurve(line);
    }
    if (keyword == "mtllib" || keyword == "s" || keyword == "usemap" || keyword == "maplib" ||
        keyword == "lod" || keyword == "mg" || keyword == "shadow_obj" || keyword == "trace_obj" ||
        keyword == "bevel" || keyword == "c_interp" || keyword == "d_interp") {
        return std::nullopt;
    }
    if (keyword == "p" || keyword == "l") {
        skipped(keyword == "p" ? "point ('p')" : "line ('l')");
        return std::nullopt;
    }
    skipped("'" + std::string(keyword) + "'");
    return std::nullopt;
}

std::optional<ObjError> ObjReaderState::vertex(std::size_t line,
                                               const std::vector<std::string_view>& t) {
    const std::size_t n = t.size() - 1;
    if (n != 3 && n != 4 && n != 6 && n != 7) {
        return error(line, "'v' needs x y z, x y z w, x y z r g b or x y z r g b a");
    }
    double values[7] = {0.0, 0.0, 0.0, 1.0, 0.0, 0.0, 1.0};
    for (std::size_t i = 0; i < n; ++i) {
        const auto value = parseNumber<double>(t[i + 1]);
        if (!value) {
            return error(line, "bad number '" + std::string(t[i + 1]) + "'");
        }
        values[i] = *value;
    }
    for (std::size_t i = 0; i < 3; ++i) {
        // Read as float on its own: a float's shortest text must give back that float.
        const auto value = parseNumber<float>(t[i + 1]);
        if (!value) {
            return error(line, "coordinate '" + std::string(t[i + 1]) + "' is out of range");
        }
        pointFloats_.push_back(*value);
    }
    const bool colored = n >= 6;
    positions_.insert(positions_.end(),
                      {values[0], values[1], values[2], colored ? 1.0 : values[3]});
    if (colored) {
        colors_.insert(colors_.end(), {float(values[3]), float(values[4]), float(values[5]),
                                       n == 7 ? float(values[6]) : 1.0f});
    } else {
        colors_.insert(colors_.end(), {0.0f, 0.0f, 0.0f, 1.0f});
    }
    colorChannels_.push_back(static_cast<unsigned char>(colored ? n - 3 : 0));
    if (colorChannels_.size() > kMaxElements) {
        return error(line, "too many 'v' entries");
    }
    return std::nullopt;
}

std::optional<ObjError> ObjReaderState::face(std::size_t line,
                                             const std::vector<std::string_view>& t) {
    if (t.size() < 4) {
        skipped("face with fewer than 3 vertices");
        return std::nullopt;
    }
    ObjObject& o = current();
    if (o.fvPoint.size() + t.size() > kMaxElements) {
        return error(line, "too many face-vertices");
    }
    const std::size_t points = colorChannels_.size();
    const std::size_t uvCount = uvs_.size() / 2;
    const std::size_t normalCount = normals_.size() / 3;
    for (std::size_t i = 1; i < t.size(); ++i) {
        std::string_view parts[3];
        std::size_t partCount = 0;
        std::string_view token = t[i];
        while (partCount < 3) {
            const std::size_t slash = token.find('/');
            parts[partCount++] = token.substr(0, slash);
            if (slash == std::string_view::npos) {
                break;
            }
            token.remove_prefix(slash + 1);
            if (partCount == 3) {
                return error(line, "bad face vertex '" + std::string(t[i]) + "'");
            }
        }
        const auto point = resolveIndex(parts[0], points);
        if (!point) {
            return error(line, indexError("vertex", parts[0], points));
        }
        int uv = -1;
        int normal = -1;
        if (partCount > 1 && !parts[1].empty()) {
            const auto index = resolveIndex(parts[1], uvCount);
            if (!index) {
                return error(line, indexError("texture coordinate", parts[1], uvCount));
            }
            uv = *index;
        }
        if (partCount > 2 && !parts[2].empty()) {
            const auto index = resolveIndex(parts[2], normalCount);
            if (!index) {
                return error(line, indexError("normal", parts[2], normalCount));
            }
            normal = *index;
        }
        o.fvPoint.push_back(*point);
        o.fvUV.push_back(uv);
        o.fvNormal.push_back(normal);
    }
    o.faceCounts.push_back(static_cast<int>(t.size() - 1));
    o.faceGroups.push_back(currentGroups_);
    o.faceMaterial.push_back(currentMaterial_);
    return std::nullopt;
}

std::optional<ObjError> ObjReaderState::curve(std::size_t line,
                                              const std::vector<std::string_view>& t) {
    if (t.size() < 5) {
        return error(line, "'curv' needs u0 u1 and at least two control points");
    }
    const auto u0 = parseNumber<double>(t[1]);
    const auto u1 = parseNumber<double>(t[2]);
    if (!u0 || !u1) {
        return error(line, "bad curve parameter range");
    }
    pending_ = PendingCurve{true, *u0, *u1, {}, {}};
    pendingLine_ = line;
    const std::size_t points = colorChannels_.size();
    for (std::size_t i = 3; i < t.size(); ++i) {
        const auto index = resolveIndex(t[i], points);
        if (!index) {
            return error(line, indexError("control point", t[i], points));
        }
        pending_.cvs.push_back(*index);
    }
    return std::nullopt;
}

std::optional<ObjError> ObjReaderState::endCurve(std::size_t line) {
    if (!pending_.open) {
        return std::nullopt; // `end` also closes surfaces, which are skipped
    }
    pending_.open = false;
    if (curveType_ != "bspline" && curveType_ != "rat bspline") {
        skipped(curveType_.empty() ? "curve without 'cstype'" : "'" + curveType_ + "' curve");
        return std::nullopt;
    }
    if (degree_ < 1) {
        return error(line, "curve without 'deg'");
    }
    const std::size_t n = pending_.cvs.size();
    const std::size_t p = static_cast<std::size_t>(degree_);
    if (n < p + 1) {
        return error(line, "a curve of degree " + std::to_string(p) + " needs at least " +
                               std::to_string(p + 1) + " control points, not " + std::to_string(n));
    }
    if (pending_.knots.size() != n + p + 1) {
        return error(line, "the curve has " + std::to_string(pending_.knots.size()) + " knots; " +
                               std::to_string(n) + " control points of degree " +
                               std::to_string(p) + " need " + std::to_string(n + p + 1));
    }
    CurveRecord c;
    c.name = current().name;
    c.degree = degree_;
    c.rational = curveType_ == "rat bspline";
    for (int index : pending_.cvs) {
        const double* v = &positions_[4 * static_cast<std::size_t>(index)];
        c.cvs.push_back({v[0], v[1], v[2], c.rational ? v[3] : 1.0});
    }
    c.knots.assign(pending_.knots.begin() + 1, pending_.knots.end() - 1);
    c.form = inferCurveForm(c.degree, c.cvs, pending_.knots);
    const double start = pending_.knots[p];
    const double end = pending_.knots[n];
    if (pending_.u0 != start || pending_.u1 != end) {
        skipped("curve parameter range other than its knot domain (the whole curve is kept)");
    }
    current().curves.push_back(std::move(c));
    return std::nullopt;
}

std::optional<ObjError> ObjReaderState::finish(std::size_t lastLine) {
    if (pending_.open) {
        return error(pendingLine_ > 0 ? pendingLine_ : lastLine, "curve not closed by 'end'");
    }
    return std::nullopt;
}

MeshRecord ObjReaderState::mesh(const ObjObject& o) const {
    MeshRecord m;
    m.name = o.name;
    m.faceCounts = o.faceCounts;
    const IndexCompaction points(o.fvPoint);
    for (int g : points.globals()) {
        const float* p = &pointFloats_[3 * static_cast<std::size_t>(g)];
        m.points.insert(m.points.end(), p, p + 3);
    }
    m.faceVertices.reserve(o.fvPoint.size());
    for (int g : o.fvPoint) {
        m.faceVertices.push_back(points.local(g));
    }

    // Colours per point, for the points whose `v` carried them.
    int channels = 0;
    std::vector<int> colorOfPoint(points.globals().size(), -1);
    ColorSetRecord colors{"colorSet1", 3, {}, {}};
    for (std::size_t i = 0; i < points.globals().size(); ++i) {
        const std::size_t g = static_cast<std::size_t>(points.globals()[i]);
        if (colorChannels_[g] != 0) {
            channels = std::max<int>(channels, colorChannels_[g]);
            colorOfPoint[i] = static_cast<int>(colors.colors.size());
            colors.colors.push_back(
                {colors_[4 * g], colors_[4 * g + 1], colors_[4 * g + 2], colors_[4 * g + 3]});
        }
    }
    if (channels != 0) {
        colors.representation = channels;
        for (int local : m.faceVertices) {
            colors.ids.push_back(colorOfPoint[static_cast<std::size_t>(local)]);
        }
        m.colorSets.push_back(std::move(colors));
    }

    // UVs: a face is mapped only when all its face-vertices name a texture coordinate.
    if (std::any_of(o.fvUV.begin(), o.fvUV.end(), [](int id) { return id >= 0; })) {
        const IndexCompaction uvs(o.fvUV);
        UVSetRecord set{"map1", {}, {}, {}};
        for (int g : uvs.globals()) {
            set.u.push_back(uvs_[2 * static_cast<std::size_t>(g)]);
            set.v.push_back(uvs_[2 * static_cast<std::size_t>(g) + 1]);
        }
        std::size_t first = 0;
        for (int count : o.faceCounts) {
            const auto begin = o.fvUV.begin() + static_cast<std::ptrdiff_t>(first);
            const bool mapped = std::all_of(begin, begin + count, [](int id) { return id >= 0; });
            for (int k = 0; k < count; ++k) {
                set.ids.push_back(mapped ? uvs.local(o.fvUV[first + static_cast<std::size_t>(k)])
                                         : -1);
            }
            first += static_cast<std::size_t>(count);
        }
        m.uvSets.push_back(std::move(set));
    }

    if (std::any_of(o.fvNormal.begin(), o.fvNormal.end(), [](int id) { return id >= 0; })) {
        const IndexCompaction normals(o.fvNormal);
        for (int g : normals.globals()) {
            const float* n = &normals_[3 * static_cast<std::size_t>(g)];
            m.normals.xyz.insert(m.normals.xyz.end(), n, n + 3);
        }
        for (int g : o.fvNormal) {
            m.normals.ids.push_back(g < 0 ? -1 : normals.local(g));
        }
    }

    // Face sets and materials, in the order they first appear.
    std::map<std::string, std::size_t> groupIndex;
    for (std::size_t f = 0; f < o.faceGroups.size(); ++f) {
        for (const std::string& name : groupLists_[static_cast<std::size_t>(o.faceGroups[f])]) {
            auto [at, added] = groupIndex.emplace(name, m.groups.size());
            if (added) {
                m.groups.push_back(FaceSetRecord{name, {}});
            }
            m.groups[at->second].faces.push_back(static_cast<int>(f));
        }
    }
    std::map<int, std::size_t> materialIndex;
    for (std::size_t f = 0; f < o.faceMaterial.size(); ++f) {
        const int material = o.faceMaterial[f];
        if (material < 0) {
            continue;
        }
        auto [at, added] = materialIndex.emplace(material, m.materials.size());
        if (added) {
            m.materials.push_back(
                FaceSetRecord{materials_[static_cast<std::size_t>(material)], {}});
        }
        m.materials[at->second].faces.push_back(static_cast<int>(f));
    }
    return m;
}

SceneData ObjReaderState::scene(std::vector<std::string> warnings) const {
    SceneData scene;
    for (const ObjObject& o : objects_) {
        if (!o.faceCounts.empty()) {
            scene.meshes.push_back(mesh(o));
        }
        scene.curves.insert(scene.curves.end(), o.curves.begin(), o.curves.end());
    }
    scene.warnings = std::move(warnings);
    return scene;
}

std::vector<std::string> ObjReaderState::warnings() const {
    std::vector<std::string> lines;
    for (const auto& [what, count] : skipped_) {
        lines.push_back("skipped " + std::to_string(count) + " x " + what);
    }
    return lines;
}

} // namespace

KStatus readObj(std::string_view text, const std::string& defaultName, SceneData& scene) {
    scene = SceneData();
    if (text.find('\0') != std::string_view::npos) {
        return KStatus(KStatus::kFailure, "not an OBJ text file (it holds binary or UTF-16 data)");
    }
    ObjReaderState state(defaultName);
    std::size_t lastLine = 0;
    std::optional<ObjError> failure;
    forEachStatement(text, [&](std::size_t line, const std::vector<std::string_view>& tokens,
                               std::string_view rest) {
        lastLine = line;
        failure = state.statement(line, tokens, rest);
        return !failure;
    });
    if (!failure) {
        failure = state.finish(lastLine);
    }
    if (failure) {
        return KStatus(KStatus::kFailure,
                       KString("line " + std::to_string(failure->line) + ": " + failure->reason));
    }
    scene = state.scene(state.warnings());
    return KStatus();
}

} // namespace KovaIo
