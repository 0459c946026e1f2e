#include "NumberText.h"

#include <algorithm>
#include <kova/nurbs/KnotVector.h>
#include <kova_io/ObjWriter.h>
#include <optional>

namespace KovaIo {

namespace {

// Running totals of the file's global tables and the grouping state that `g` and `usemtl`
// set, which carries over from one object to the next.
struct ObjWriterState {
    std::string out;
    std::size_t points = 0;
    std::size_t uvs = 0;
    std::size_t normals = 0;
    std::string groups;
    std::optional<std::string> material;
    std::vector<std::string>* warnings = nullptr;
};

template <class T>
void appendNumbers(std::string& out, const char* keyword, std::initializer_list<T> values) {
    out += keyword;
    for (T value : values) {
        out += ' ';
        appendNumber(out, value);
    }
    out += '\n';
}

// One colour-table index per point when the mesh's first colour set gives every point a
// single colour (-1 for points without any); nothing when it varies between face-vertices.
std::optional<std::vector<int>> pointColors(const MeshRecord& m, const ColorSetRecord& set) {
    std::vector<int> ofPoint(static_cast<std::size_t>(m.pointCount()), -2); // -2: not seen
    for (std::size_t k = 0; k < m.faceVertices.size(); ++k) {
        const int id = set.ids.empty() ? -1 : set.ids[k];
        int& slot = ofPoint[static_cast<std::size_t>(m.faceVertices[k])];
        if (slot == -2) {
            slot = id;
        } else if (slot != id && (slot < 0 || id < 0 ||
                                  set.colors[static_cast<std::size_t>(slot)] !=
                                      set.colors[static_cast<std::size_t>(id)])) {
            return std::nullopt;
        }
    }
    std::replace(ofPoint.begin(), ofPoint.end(), -2, -1);
    return ofPoint;
}

// Group names cannot hold blanks in OBJ: they become underscores.
std::string groupName(std::string name) {
    std::replace_if(
        name.begin(), name.end(), [](char c) { return c == ' ' || c == '\t'; }, '_');
    return name;
}

// Per face, the `g` line content and the material index (-1: none).
void faceGrouping(const MeshRecord& m, std::vector<std::string>& groups,
                  std::vector<int>& materials) {
    groups.assign(static_cast<std::size_t>(m.faceCount()), std::string());
    for (const FaceSetRecord& set : m.groups) {
        const std::string name = groupName(set.name);
        for (int f : set.faces) {
            std::string& line = groups[static_cast<std::size_t>(f)];
            line += (line.empty() ? "" : " ") + name;
        }
    }
    materials.assign(static_cast<std::size_t>(m.faceCount()), -1);
    for (std::size_t i = 0; i < m.materials.size(); ++i) {
        for (int f : m.materials[i].faces) {
            materials[static_cast<std::size_t>(f)] = static_cast<int>(i);
        }
    }
}

void writeMesh(ObjWriterState& s, const MeshRecord& m) {
    std::string& out = s.out;
    std::vector<std::string>& warnings = *s.warnings;
    out += "o " + m.name + '\n';

    std::optional<std::vector<int>> colorOfPoint;
    const ColorSetRecord* colors = m.colorSets.empty() ? nullptr : &m.colorSets.front();
    if (colors != nullptr) {
        colorOfPoint = pointColors(m, *colors);
        if (!colorOfPoint) {
            warnings.push_back("mesh '" + m.name + "': colour set '" + colors->name +
                               "' varies between the face-vertices of a point; OBJ keeps one "
                               "colour per point, so it is not written");
        } else if (colors->representation == 4) {
            warnings.push_back("mesh '" + m.name + "': the alpha of colour set '" + colors->name +
                               "' is not written");
        }
        for (std::size_t i = 1; i < m.colorSets.size(); ++i) {
            warnings.push_back("mesh '" + m.name + "': colour set '" + m.colorSets[i].name +
                               "' is not written (OBJ holds one)");
        }
    }
    for (int i = 0; i < m.pointCount(); ++i) {
        const float* p = &m.points[3 * static_cast<std::size_t>(i)];
        const int color = colorOfPoint ? (*colorOfPoint)[static_cast<std::size_t>(i)] : -1;
        if (color >= 0) {
            const auto& c = colors->colors[static_cast<std::size_t>(color)];
            appendNumbers(out, "v", {p[0], p[1], p[2], c[0], c[1], c[2]});
        } else {
            appendNumbers(out, "v", {p[0], p[1], p[2]});
        }
    }

    const UVSetRecord* uv = m.uvSets.empty() ? nullptr : &m.uvSets.front();
    for (std::size_t i = 1; i < m.uvSets.size(); ++i) {
        warnings.push_back("mesh '" + m.name + "': UV set '" + m.uvSets[i].name +
                           "' is not written (OBJ holds one)");
    }
    if (uv != nullptr) {
        for (std::size_t i = 0; i < uv->u.size(); ++i) {
            appendNumbers(out, "vt", {uv->u[i], uv->v[i]});
        }
    }
    for (std::size_t i = 0; i + 2 < m.normals.xyz.size(); i += 3) {
        appendNumbers(out, "vn", {m.normals.xyz[i], m.normals.xyz[i + 1], m.normals.xyz[i + 2]});
    }

    std::vector<std::string> groups;
    std::vector<int> materials;
    faceGrouping(m, groups, materials);
    std::size_t k = 0;
    for (int f = 0; f < m.faceCount(); ++f) {
        const auto face = static_cast<std::size_t>(f);
        if (groups[face] != s.groups) {
            s.groups = groups[face];
            out += s.groups.empty() ? "g\n" : "g " + s.groups + '\n';
        }
        const std::optional<std::string> material =
            materials[face] < 0
                ? std::nullopt
                : std::optional(m.materials[static_cast<std::size_t>(materials[face])].name);
        if (material != s.material) {
            s.material = material;
            out += material ? "usemtl " + *material + '\n' : "usemtl\n";
        }
        out += 'f';
        for (int corner = 0; corner < m.faceCounts[face]; ++corner, ++k) {
            out += ' ';
            appendNumber(out, s.points + static_cast<std::size_t>(m.faceVertices[k]) + 1);
            const int uvId = uv != nullptr && !uv->ids.empty() ? uv->ids[k] : -1;
            const int normalId = m.normals.ids.empty() ? -1 : m.normals.ids[k];
            if (uvId >= 0 || normalId >= 0) {
                out += '/';
                if (uvId >= 0) {
                    appendNumber(out, s.uvs + static_cast<std::size_t>(uvId) + 1);
                }
            }
            if (normalId >= 0) {
                out += '/';
                appendNumber(out, s.normals + static_cast<std::size_t>(normalId) + 1);
            }
        }
        out += '\n';
    }
    s.points += static_cast<std::size_t>(m.pointCount());
    s.uvs += uv != nullptr ? uv->u.size() : 0;
    s.normals += m.normals.xyz.size() / 3;
}

void writeCurve(ObjWriterState& s, const CurveRecord& c) {
    const auto form = static_cast<kova::nurbs::Form>(c.form);
    const std::vector<double> full = kova::nurbs::fullKnotsFromHost(c.knots, c.degree, form);
    const std::size_t n = c.cvs.size();
    const auto p = static_cast<std::size_t>(c.degree);
    if (full.size() != n + p + 1) {
        s.warnings->push_back("curve '" + c.name + "' is not written: its knots do not fit");
        return;
    }
    std::string& out = s.out;
    out += "o " + c.name + '\n';
    for (const auto& cv : c.cvs) {
        if (c.rational) {
            appendNumbers(out, "v", {cv[0], cv[1], cv[2], cv[3]});
        } else {
            appendNumbers(out, "v", {cv[0], cv[1], cv[2]});
        }
    }
    out += c.rational ? "cstype rat bspline\n" : "cstype bspline\n";
    out += "deg ";
    appendNumber(out, c.degree);
    out += "\ncurv ";
    appendNumber(out, full[p]);
    out += ' ';
    appendNumber(out, full[n]);
    for (std::size_t i = 0; i < n; ++i) {
        out += ' ';
        appendNumber(out, s.points + i + 1);
    }
    out += "\nparm u";
    for (double knot : full) {
        out += ' ';
        appendNumber(out, knot);
    }
    out += "\nend\n";
    s.points += n;
}

} // namespace

std::string writeObj(const SceneData& scene, std::vector<std::string>& warnings) {
    ObjWriterState state;
    state.warnings = &warnings;
    state.out = "# OBJ written by kova\n";
    for (const MeshRecord& mesh : scene.meshes) {
        writeMesh(state, mesh);
    }
    for (const CurveRecord& curve : scene.curves) {
        writeCurve(state, curve);
    }
    return std::move(state.out);
}

} // namespace KovaIo
