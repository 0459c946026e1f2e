#include <algorithm>
#include <assimp/Exporter.hpp>
#include <assimp/material.h>
#include <assimp/scene.h>
#include <kova_io/AssimpWriter.h>
#include <kova_io/FileText.h>
#include <map>
#include <memory>

namespace KovaIo {

namespace {

template <class T>
T* newArray(std::size_t count) {
    return count == 0 ? nullptr : new T[count]();
}

// The Assimp mesh of the faces `faces` of `m` (one face-vertex per vertex).
aiMesh* makeMesh(const MeshRecord& m, const std::vector<int>& faces,
                 const std::vector<int>& faceStart, unsigned int material) {
    auto mesh = std::make_unique<aiMesh>();
    mesh->mName = aiString(m.name);
    mesh->mMaterialIndex = material;
    std::size_t vertices = 0;
    for (int f : faces) {
        vertices += static_cast<std::size_t>(m.faceCounts[static_cast<std::size_t>(f)]);
    }
    mesh->mNumVertices = static_cast<unsigned int>(vertices);
    mesh->mVertices = newArray<aiVector3D>(vertices);
    const bool normals =
        !m.normals.ids.empty() &&
        std::none_of(m.normals.ids.begin(), m.normals.ids.end(), [](int id) { return id < 0; });
    if (normals) {
        mesh->mNormals = newArray<aiVector3D>(vertices);
    }
    const std::size_t uvSets =
        std::min<std::size_t>(m.uvSets.size(), AI_MAX_NUMBER_OF_TEXTURECOORDS);
    for (std::size_t t = 0; t < uvSets; ++t) {
        mesh->mTextureCoords[t] = newArray<aiVector3D>(vertices);
        mesh->mNumUVComponents[t] = 2;
    }
    const std::size_t colorSets =
        std::min<std::size_t>(m.colorSets.size(), AI_MAX_NUMBER_OF_COLOR_SETS);
    for (std::size_t t = 0; t < colorSets; ++t) {
        mesh->mColors[t] = newArray<aiColor4D>(vertices);
    }
    mesh->mNumFaces = static_cast<unsigned int>(faces.size());
    mesh->mFaces = newArray<aiFace>(faces.size());
    unsigned int vertex = 0;
    for (std::size_t i = 0; i < faces.size(); ++i) {
        const auto f = static_cast<std::size_t>(faces[i]);
        const auto count = static_cast<unsigned int>(m.faceCounts[f]);
        aiFace& face = mesh->mFaces[i];
        face.mNumIndices = count;
        face.mIndices = new unsigned int[count];
        mesh->mPrimitiveTypes |= count == 3 ? aiPrimitiveType_TRIANGLE : aiPrimitiveType_POLYGON;
        for (unsigned int c = 0; c < count; ++c, ++vertex) {
            face.mIndices[c] = vertex;
            const std::size_t k = static_cast<std::size_t>(faceStart[f]) + c;
            const float* p = &m.points[3 * static_cast<std::size_t>(m.faceVertices[k])];
            mesh->mVertices[vertex] = aiVector3D(p[0], p[1], p[2]);
            if (normals) {
                const float* n = &m.normals.xyz[3 * static_cast<std::size_t>(m.normals.ids[k])];
                mesh->mNormals[vertex] = aiVector3D(n[0], n[1], n[2]);
            }
            for (std::size_t t = 0; t < uvSets; ++t) {
                const UVSetRecord& set = m.uvSets[t];
                const int id = set.ids.empty() ? -1 : set.ids[k];
                if (id >= 0) {
                    const auto at = static_cast<std::size_t>(id);
                    mesh->mTextureCoords[t][vertex] = aiVector3D(set.u[at], set.v[at], 0.0f);
                }
            }
            for (std::size_t t = 0; t < colorSets; ++t) {
                const ColorSetRecord& set = m.colorSets[t];
                const int id = set.ids.empty() ? -1 : set.ids[k];
                if (id >= 0) {
                    const auto& color = set.colors[static_cast<std::size_t>(id)];
                    mesh->mColors[t][vertex] = aiColor4D(color[0], color[1], color[2], color[3]);
                }
            }
        }
    }
    return mesh.release();
}

aiMaterial* makeMaterial(const std::string& name) {
    auto* material = new aiMaterial();
    const aiString text(name);
    material->AddProperty(&text, AI_MATKEY_NAME);
    const aiColor3D grey(0.5f, 0.5f, 0.5f);
    material->AddProperty(&grey, 1, AI_MATKEY_COLOR_DIFFUSE);
    return material;
}

void noteDropped(const SceneData& scene, std::vector<std::string>& warnings) {
    for (const CurveRecord& curve : scene.curves) {
        warnings.push_back("curve '" + curve.name + "' is not written (the format holds meshes)");
    }
    for (const MeshRecord& m : scene.meshes) {
        for (const FaceSetRecord& group : m.groups) {
            warnings.push_back("mesh '" + m.name + "': face set '" + group.name +
                               "' is not written");
        }
        if (!m.normals.ids.empty() && std::any_of(m.normals.ids.begin(), m.normals.ids.end(),
                                                  [](int id) { return id < 0; })) {
            warnings.push_back("mesh '" + m.name +
                               "': normals are not written (some "
                               "face-vertices have none)");
        }
        if (m.uvSets.size() > AI_MAX_NUMBER_OF_TEXTURECOORDS ||
            m.colorSets.size() > AI_MAX_NUMBER_OF_COLOR_SETS) {
            warnings.push_back("mesh '" + m.name +
                               "': UV or colour sets past the eighth are "
                               "not written");
        }
    }
}

} // namespace

KStatus writeWithAssimp(const std::string& path, const std::string& assimpFormat,
                        const SceneData& scene, std::vector<std::string>& warnings) {
    noteDropped(scene, warnings);
    aiScene out;
    std::vector<std::string> materialNames{AI_DEFAULT_MATERIAL_NAME};
    std::map<std::string, unsigned int> materialIndex;
    std::vector<aiMesh*> meshes;
    out.mRootNode = new aiNode("root");
    std::vector<aiNode*> children;
    for (const MeshRecord& m : scene.meshes) {
        std::vector<int> faceStart(m.faceCounts.size());
        int running = 0;
        for (std::size_t f = 0; f < m.faceCounts.size(); ++f) {
            faceStart[f] = running;
            running += m.faceCounts[f];
        }
        // Faces per material, in record order; faces without one go to the default.
        std::vector<int> materialOfFace(m.faceCounts.size(), 0);
        for (const FaceSetRecord& material : m.materials) {
            auto [at, added] = materialIndex.emplace(
                material.name, static_cast<unsigned int>(materialNames.size()));
            if (added) {
                materialNames.push_back(material.name);
            }
            for (int f : material.faces) {
                materialOfFace[static_cast<std::size_t>(f)] = static_cast<int>(at->second);
            }
        }
        std::map<int, std::vector<int>> facesOf;
        for (std::size_t f = 0; f < materialOfFace.size(); ++f) {
            facesOf[materialOfFace[f]].push_back(static_cast<int>(f));
        }
        auto* node = new aiNode(m.name);
        node->mParent = out.mRootNode;
        node->mNumMeshes = static_cast<unsigned int>(facesOf.size());
        node->mMeshes = newArray<unsigned int>(facesOf.size());
        unsigned int slot = 0;
        for (const auto& [material, faces] : facesOf) {
            node->mMeshes[slot++] = static_cast<unsigned int>(meshes.size());
            meshes.push_back(makeMesh(m, faces, faceStart, static_cast<unsigned int>(material)));
        }
        children.push_back(node);
    }
    out.mRootNode->addChildren(static_cast<unsigned int>(children.size()), children.data());
    out.mNumMeshes = static_cast<unsigned int>(meshes.size());
    out.mMeshes = newArray<aiMesh*>(meshes.size());
    std::copy(meshes.begin(), meshes.end(), out.mMeshes);
    out.mNumMaterials = static_cast<unsigned int>(materialNames.size());
    out.mMaterials = newArray<aiMaterial*>(materialNames.size());
    for (std::size_t i = 0; i < materialNames.size(); ++i) {
        out.mMaterials[i] = makeMaterial(materialNames[i]);
    }
    Assimp::Exporter exporter;
    if (exporter.Export(&out, assimpFormat, path) != aiReturn_SUCCESS) {
        std::string reason = exporter.GetErrorString();
        std::replace(reason.begin(), reason.end(), '\n', ' ');
        return ioFailure("cannot write '" + path +
                         "': " + (reason.empty() ? "export failed" : reason));
    }
    return KStatus();
}

} // namespace KovaIo
