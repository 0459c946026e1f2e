#include "MemoryBudget.h"
#include "ValueTable.h"

#include <assimp/Importer.hpp>
#include <assimp/material.h>
#include <assimp/scene.h>
#include <cmath>
#include <filesystem>
#include <kova/KString.h>
#include <kova_io/AssimpReader.h>
#include <kova_io/FileText.h>
#include <map>
#include <memory>
#include <new>

namespace KovaIo {

namespace {

// Per-face-vertex values of one channel, welded into a table of distinct values.
template <std::size_t N>
struct Channel {
    ValueTable<N> table;
    std::vector<int> ids;
};

// Gathers the meshes of one node into one record.
class NodeMeshBuilder {
public:
    NodeMeshBuilder(const aiScene& scene, const aiMatrix4x4& world, bool weld)
        : scene_(scene), world_(world), weld_(weld), identity_(world.IsIdentity()),
          normalMatrix_(aiMatrix3x3(world)) {
        normalMatrix_.Inverse().Transpose();
    }

    // Adds the faces of `mesh`; false when a face names a vertex the mesh does not have.
    bool add(const aiMesh& mesh);
    MeshRecord record(std::string name, std::size_t& skippedFaces);

private:
    // Face-vertices without a value in a channel (the mesh lacks it) get the id -1.
    void padChannels(std::size_t faceVertices);
    aiVector3D point(const aiVector3D& p) const { return identity_ ? p : world_ * p; }
    aiVector3D normal(const aiVector3D& n) const {
        if (identity_) {
            return n;
        }
        aiVector3D mapped = normalMatrix_ * n;
        const ai_real length = mapped.Length();
        return length > 0 ? mapped / length : mapped;
    }

    const aiScene& scene_;
    aiMatrix4x4 world_;
    bool weld_;
    bool identity_;
    aiMatrix3x3 normalMatrix_;

    ValueTable<3> weldedPoints_;
    std::vector<float> points_; // without welding
    std::vector<int> counts_;
    std::vector<int> faceVertices_;
    Channel<3> normals_;
    std::vector<Channel<2>> uvs_;
    std::vector<Channel<4>> colors_;
    std::map<std::string, std::vector<int>> materialFaces_;
    std::vector<std::string> materialOrder_;
    std::size_t skippedFaces_ = 0;
};

bool NodeMeshBuilder::add(const aiMesh& mesh) {
    if (mesh.mVertices == nullptr && mesh.mNumVertices > 0) {
        return false;
    }
    const std::size_t fvBefore = faceVertices_.size();
    const int base = static_cast<int>(points_.size() / 3);
    if (!weld_) {
        for (unsigned int i = 0; i < mesh.mNumVertices; ++i) {
            const aiVector3D p = point(mesh.mVertices[i]);
            points_.insert(points_.end(), {p.x, p.y, p.z});
        }
    }
    std::string material;
    if (mesh.mMaterialIndex < scene_.mNumMaterials) {
        const aiString name = scene_.mMaterials[mesh.mMaterialIndex]->GetName();
        if (std::string(name.C_Str()) != AI_DEFAULT_MATERIAL_NAME) {
            material = name.C_Str();
        }
    }
    std::vector<int>* materialFaces = nullptr;
    if (!material.empty()) {
        auto [at, added] = materialFaces_.emplace(material, std::vector<int>());
        if (added) {
            materialOrder_.push_back(material);
        }
        materialFaces = &at->second;
    }
    const unsigned int uvChannels = mesh.GetNumUVChannels();
    const unsigned int colorChannels = mesh.GetNumColorChannels();
    if (uvs_.size() < uvChannels) {
        uvs_.resize(uvChannels);
    }
    if (colors_.size() < colorChannels) {
        colors_.resize(colorChannels);
    }
    padChannels(fvBefore); // channels first seen on this mesh start after the earlier ones
    for (unsigned int f = 0; f < mesh.mNumFaces; ++f) {
        const aiFace& face = mesh.mFaces[f];
        if (face.mNumIndices < 3) {
            ++skippedFaces_;
            continue;
        }
        for (unsigned int c = 0; c < face.mNumIndices; ++c) {
            if (face.mIndices[c] >= mesh.mNumVertices) {
                return false;
            }
        }
        if (materialFaces != nullptr) {
            materialFaces->push_back(static_cast<int>(counts_.size()));
        }
        counts_.push_back(static_cast<int>(face.mNumIndices));
        for (unsigned int c = 0; c < face.mNumIndices; ++c) {
            const unsigned int i = face.mIndices[c];
            if (weld_) {
                const aiVector3D p = point(mesh.mVertices[i]);
                const float xyz[3] = {p.x, p.y, p.z};
                faceVertices_.push_back(weldedPoints_.add(xyz));
            } else {
                faceVertices_.push_back(base + static_cast<int>(i));
            }
            if (mesh.HasNormals()) {
                const aiVector3D n = normal(mesh.mNormals[i]);
                const float xyz[3] = {n.x, n.y, n.z};
                normals_.ids.push_back(normals_.table.add(xyz));
            }
            for (unsigned int t = 0; t < uvChannels; ++t) {
                const aiVector3D& uv = mesh.mTextureCoords[t][i];
                const float values[2] = {uv.x, mesh.mNumUVComponents[t] > 1 ? uv.y : 0.0f};
                uvs_[t].ids.push_back(uvs_[t].table.add(values));
            }
            for (unsigned int t = 0; t < colorChannels; ++t) {
                const aiColor4D& color = mesh.mColors[t][i];
                const float values[4] = {color.r, color.g, color.b, color.a};
                colors_[t].ids.push_back(colors_[t].table.add(values));
            }
        }
    }
    padChannels(faceVertices_.size());
    return true;
}

void NodeMeshBuilder::padChannels(std::size_t faceVertices) {
    normals_.ids.resize(faceVertices, -1);
    for (auto& channel : uvs_) {
        channel.ids.resize(faceVertices, -1);
    }
    for (auto& channel : colors_) {
        channel.ids.resize(faceVertices, -1);
    }
}

MeshRecord NodeMeshBuilder::record(std::string name, std::size_t& skippedFaces) {
    skippedFaces += skippedFaces_;
    MeshRecord m;
    m.name = std::move(name);
    m.points = weld_ ? weldedPoints_.values() : std::move(points_);
    m.faceCounts = std::move(counts_);
    m.faceVertices = std::move(faceVertices_);
    if (normals_.table.size() > 0) {
        m.normals.xyz = normals_.table.values();
        m.normals.ids = std::move(normals_.ids);
    }
    for (std::size_t t = 0; t < uvs_.size(); ++t) {
        UVSetRecord set{"map" + std::to_string(t + 1), {}, {}, std::move(uvs_[t].ids)};
        const std::vector<float>& values = uvs_[t].table.values();
        for (std::size_t i = 0; i + 1 < values.size(); i += 2) {
            set.u.push_back(values[i]);
            set.v.push_back(values[i + 1]);
        }
        m.uvSets.push_back(std::move(set));
    }
    for (std::size_t t = 0; t < colors_.size(); ++t) {
        ColorSetRecord set{"colorSet" + std::to_string(t + 1), 4, {}, std::move(colors_[t].ids)};
        const std::vector<float>& values = colors_[t].table.values();
        for (std::size_t i = 0; i + 3 < values.size(); i += 4) {
            set.colors.push_back({values[i], values[i + 1], values[i + 2], values[i + 3]});
        }
        m.colorSets.push_back(std::move(set));
    }
    for (const std::string& material : materialOrder_) {
        m.materials.push_back(FaceSetRecord{material, std::move(materialFaces_[material])});
    }
    return m;
}

// Adds the meshes of `node` and its children; false naming the mesh whose faces name
// vertices it does not have.
bool collectNode(const aiScene& scene, const aiNode& node, const aiMatrix4x4& parent, bool weld,
                 const std::string& stem, SceneData& out, std::size_t& skippedFaces,
                 std::string& badMesh) {
    const aiMatrix4x4 world = parent * node.mTransformation;
    if (node.mNumMeshes > 0) {
        NodeMeshBuilder builder(scene, world, weld);
        for (unsigned int i = 0; i < node.mNumMeshes; ++i) {
            if (node.mMeshes[i] >= scene.mNumMeshes) {
                continue;
            }
            const aiMesh& mesh = *scene.mMeshes[node.mMeshes[i]];
            if (!builder.add(mesh)) {
                badMesh = mesh.mName.C_Str();
                return false;
            }
        }
        std::string name = node.mName.C_Str();
        if (name.empty() || name.front() == '<') { // Assimp's own root names: "<STL_Root>", ...
            const aiMesh* first =
                node.mMeshes[0] < scene.mNumMeshes ? scene.mMeshes[node.mMeshes[0]] : nullptr;
            name = first != nullptr && first->mName.length > 0 ? first->mName.C_Str() : stem;
        }
        MeshRecord record = builder.record(std::move(name), skippedFaces);
        if (!record.faceCounts.empty()) {
            out.meshes.push_back(std::move(record));
        }
    }
    for (unsigned int i = 0; i < node.mNumChildren; ++i) {
        if (!collectNode(scene, *node.mChildren[i], world, weld, stem, out, skippedFaces,
                         badMesh)) {
            return false;
        }
    }
    return true;
}

// Assimp's messages may span lines; the layer reports one.
std::string oneLine(std::string text) {
    for (char& c : text) {
        if (c == '\n' || c == '\r') {
            c = ' ';
        }
    }
    while (!text.empty() && text.back() == ' ') {
        text.pop_back();
    }
    return text.empty() ? "unknown reason" : text;
}

} // namespace

KStatus readWithAssimp(const std::string& path, bool weld, SceneData& scene) {
    scene = SceneData();
    Assimp::Importer importer;
    std::error_code sizeError;
    const std::uintmax_t fileBytes = std::filesystem::file_size(path, sizeError);
    const aiScene* read = nullptr;
    {
        // Assimp's readers size arrays by the counts files declare: a count beyond what the
        // file can hold fails to allocate instead of taking the memory.
        const MemoryBudget budget(MemoryBudget::forFile(sizeError ? 0 : fileBytes));
        // No post-processing: the data is taken as the file has it, and checked here.
        read = importer.ReadFile(path, 0);
    }
    if (read == nullptr) {
        const std::string reason = importer.GetErrorString();
        return ioFailure(
            "cannot read '" + path + "': " +
            (reason == std::bad_alloc().what()
                 ? "it declares more data than its " + std::to_string(fileBytes) + " bytes can hold"
                 : oneLine(reason)));
    }
    if (read->mRootNode == nullptr) {
        return ioFailure("cannot read '" + path + "': the file holds no scene");
    }
    std::size_t skippedFaces = 0;
    const std::string stem = std::filesystem::path(path).stem().string();
    std::string badMesh;
    if (!collectNode(*read, *read->mRootNode, aiMatrix4x4(), weld, stem, scene, skippedFaces,
                     badMesh)) {
        scene = SceneData();
        return ioFailure("cannot read '" + path + "': a face of mesh '" + badMesh +
                         "' names a vertex the mesh does not have");
    }
    if (skippedFaces > 0) {
        scene.warnings.push_back("skipped " + std::to_string(skippedFaces) +
                                 " points and lines (only faces are read)");
    }
    return KStatus();
}

} // namespace KovaIo
