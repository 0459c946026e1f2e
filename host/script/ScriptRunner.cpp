#include "ScriptRunner.h"

#include "HostSession.h"
#include "report/ObjectJson.h"

#include <board/BoardExecutor.h>
#include <board/BoardNode.h>
#include <fmt/format.h>
#include <istream>
#include <kova/KDataHandle.h>
#include <kova/KFnDependencyNode.h>
#include <kova/KFnMesh.h>
#include <kova/KFnNurbsCurve.h>
#include <kova/KGlobal.h>
#include <kova/KPlug.h>
#include <kova/KSelectionList.h>
#include <kova/KStringArray.h>
#include <ostream>
#include <zeldata/ZelData.h>
#include <zelvane/file/SceneInfo.h>
#include <zelvane/geometry/GraphTransforms.h>
#include <zelvane/simulation/Time.h>

namespace KovaHost {
namespace {

using ZelvaneGraph::Executor::PortDirection;
using Words = ScriptRunner::Words;

KObject nodeNamed(const std::string& name, std::string& error) {
    KSelectionList list;
    KObject node;
    if (!list.add(name.c_str()) || !list.getDependNode(0, node)) {
        error = fmt::format("no node named \"{}\"", name);
    }
    return node;
}

bool typeNamed(const std::string& text, Orsel::Type& type) {
    if (text == "object") {
        type = Zelvane::objectType();
    } else if (text == "object[]") {
        type = Orsel::Type::arrayOf(Zelvane::objectType());
    } else if (text == "time") {
        type = Zelvane::Simulation::timeType();
    } else if (text == "transforms") {
        type = Zelvane::Geometry::Transform::graphTransformsType();
    } else if (text == "sceneinfo") {
        type = Zelvane::File::Project::sceneInfoType();
    } else {
        return false;
    }
    return true;
}

bool addPortVerb(const Words& words, std::string& error) {
    if (words.size() < 4) {
        error = "usage: port BOARD NAME in|out TYPE [KEY=VALUE ...]";
        return false;
    }
    const KObject board = nodeNamed(words[0], error);
    if (board.isNull()) {
        return false;
    }
    ZelvaneBoard::PortDescription port;
    port.name = Orsel::String(words[1]);
    if (words[2] != "in" && words[2] != "out") {
        error = fmt::format("a port is \"in\" or \"out\", not \"{}\"", words[2]);
        return false;
    }
    port.direction = words[2] == "in" ? PortDirection::Input : PortDirection::Output;
    if (!typeNamed(words[3], port.type)) {
        error = fmt::format("unknown port type \"{}\" (object, object[], time, transforms, "
                            "sceneinfo)",
                            words[3]);
        return false;
    }
    for (std::size_t i = 4; i < words.size(); ++i) {
        const auto equals = words[i].find('=');
        if (equals == std::string::npos) {
            error = fmt::format("a port option is KEY=VALUE, not \"{}\"", words[i]);
            return false;
        }
        port.metadata.setChild(Orsel::String(words[i].substr(0, equals)),
                               Orsel::String(words[i].substr(equals + 1)));
    }
    if (!ZelvaneBoard::addPort(board, port)) {
        error = fmt::format("the port \"{}\" was not added (taken name, or no bound "
                            "translation supports it)",
                            words[1]);
        return false;
    }
    return true;
}

ZelvaneBoard::BoardNode* boardNamed(const std::string& name, std::string& error) {
    const KObject node = nodeNamed(name, error);
    ZelvaneBoard::BoardNode* board =
        node.isNull() ? nullptr : ZelvaneBoard::BoardNode::fromNode(node);
    if (!node.isNull() && !board) {
        error = fmt::format("\"{}\" is not a board", name);
    }
    return board;
}

bool operatorVerb(const Words& words, std::string& error) {
    if (words.size() != 3) {
        error = "usage: operator BOARD NAME KIND";
        return false;
    }
    ZelvaneBoard::BoardNode* board = boardNamed(words[0], error);
    if (board && !board->graph().addOperator(words[1], words[2])) {
        error = fmt::format("cannot add operator \"{}\" of kind \"{}\"", words[1], words[2]);
        return false;
    }
    return board != nullptr;
}

bool wireVerb(const Words& words, std::string& error) {
    if (words.size() != 3) {
        error = "usage: wire BOARD FROM TO";
        return false;
    }
    ZelvaneBoard::BoardNode* board = boardNamed(words[0], error);
    if (board && !board->graph().connect(words[1], words[2])) {
        error = fmt::format("cannot wire {} to {}", words[1], words[2]);
        return false;
    }
    return board != nullptr;
}

std::string meshText(const KObject& mesh) {
    KFnMesh fn(mesh);
    KStringArray uvSets;
    fn.getUVSetNames(uvSets);
    std::string names;
    for (unsigned int i = 0; i < uvSets.length(); ++i) {
        names += (names.empty() ? "" : " ") + uvSets[i].str();
    }
    return fmt::format("mesh: {} points, {} faces, {} face-vertices, uv sets [{}]",
                       fn.numVertices(), fn.numPolygons(), fn.numFaceVertices(), names);
}

std::string curveText(const KObject& curve) {
    KFnNurbsCurve fn(curve);
    static const char* const forms[] = {"invalid", "open", "closed", "periodic"};
    const int form = static_cast<int>(fn.form());
    return fmt::format("nurbsCurve: degree {}, {} CVs, {}", fn.degree(), fn.numCVs(),
                       form >= 0 && form <= 3 ? forms[form] : "invalid");
}

std::string objectsText(const KDataHandle& handle) {
    const auto* data = dynamic_cast<const ZelData*>(handle.asPluginData());
    if (!data) {
        return "no objects";
    }
    std::string text = fmt::format("{} object(s)\n", data->size());
    for (std::size_t i = 0; i < data->size(); ++i) {
        text += fmt::format("[{}]\n", i);
        const auto& object = data->objects()[i];
        const std::string outline = object ? objectOutline(*object, 2) : "  null\n";
        text += outline.empty() ? "  (no properties)\n" : outline;
    }
    return text;
}

bool printVerb(std::ostream& out, const Words& words, std::string& error) {
    if (words.size() != 1) {
        error = "usage: print PLUG";
        return false;
    }
    const std::string text = plugText(words[0], error);
    if (!error.empty()) {
        return false;
    }
    out << text << (text.empty() || text.back() != '\n' ? "\n" : "");
    return true;
}

bool expectVerb(const Words& words, std::string& error) {
    if (words.size() < 2) {
        error = "usage: expect PLUG TEXT";
        return false;
    }
    std::string expected;
    for (std::size_t i = 1; i < words.size(); ++i) {
        expected += (i > 1 ? " " : "") + words[i];
    }
    std::string text = plugText(words[0], error);
    while (!text.empty() && text.back() == '\n') {
        text.pop_back();
    }
    if (error.empty() && text != expected) {
        error = fmt::format("expected {} to be \"{}\", it is \"{}\"", words[0], expected, text);
    }
    return error.empty();
}

} // namespace

std::string plugText(const std::string& plugName, std::string& error) {
    KSelectionList list;
    KPlug plug;
    if (!list.add(plugName.c_str()) || !list.getPlug(0, plug) || plug.isNull()) {
        error = fmt::format("no plug named \"{}\"", plugName);
        return {};
    }
    KDataHandle handle;
    if (!plug.isArray()) {
        if (const KStatus status = plug.getValue(handle); !status) {
            error = fmt::format("{} did not evaluate: {}", plugName, status.errorString().str());
            return {};
        }
        switch (handle.type()) {
        case KFnData::kMesh:
            return meshText(handle.asMesh());
        case KFnData::kNurbsCurve:
            return curveText(handle.asNurbsCurve());
        default:
            if (handle.typeId() == ZelData::id) {
                return objectsText(handle);
            }
            break;
        }
    }
    KStringArray result;
    if (KStatus status = KGlobal::executeCommand(("getAttr " + plugName).c_str(), &result);
        !status) {
        error = status.errorString().str();
        return {};
    }
    std::string text;
    for (unsigned int i = 0; i < result.length(); ++i) {
        text += (i ? " " : "") + result[i].str();
    }
    return text;
}

ScriptRunner::ScriptRunner(std::ostream& out) : out_(out) {
    verbs_["load-plugin"] = [](const Words& words, std::string& error) {
        const std::string path = words.empty() ? defaultPluginPath() : words[0];
        if (!ZelvaneBoard::BoardExecutor::bind(path.c_str())) {
            error = fmt::format("cannot bind the translation library {}", path);
            return false;
        }
        return true;
    };
    verbs_["board"] = [](const Words& words, std::string& error) {
        KFnDependencyNode fnNode;
        if (words.size() != 1 ||
            fnNode.create(ZelvaneBoard::BoardNode::kTypeName, words[0].c_str()).isNull()) {
            error = "usage: board NAME (a new node name)";
            return false;
        }
        return true;
    };
    verbs_["port"] = &addPortVerb;
    verbs_["operator"] = &operatorVerb;
    verbs_["wire"] = &wireVerb;
    verbs_["evaluate"] = [](const Words& words, std::string& error) {
        if (words.size() != 1) {
            error = "usage: evaluate BOARD";
            return false;
        }
        const KObject board = nodeNamed(words[0], error);
        if (!board.isNull() && !ZelvaneBoard::evaluate(board)) {
            error = fmt::format("the evaluation of {} failed", words[0]);
        }
        return error.empty();
    };
    verbs_["print"] = [this](const Words& words, std::string& error) {
        return printVerb(out_, words, error);
    };
    verbs_["expect"] = &expectVerb;
    verbs_["echo"] = [this](const Words& words, std::string&) {
        for (std::size_t i = 0; i < words.size(); ++i) {
            out_ << (i ? " " : "") << words[i];
        }
        out_ << '\n';
        return true;
    };
}

void ScriptRunner::addVerb(const std::string& name, Verb verb) {
    verbs_[name] = std::move(verb);
}

bool ScriptRunner::split(const std::string& line, Words& words) {
    words.clear();
    std::string word;
    bool inWord = false;
    bool quoted = false;
    for (char c : line) {
        if (c == '"') {
            quoted = !quoted;
            inWord = true;
        } else if (!quoted && (c == ' ' || c == '\t' || c == '\r')) {
            if (inWord) {
                words.push_back(std::move(word));
                word.clear();
                inWord = false;
            }
        } else {
            word += c;
            inWord = true;
        }
    }
    if (inWord) {
        words.push_back(std::move(word));
    }
    return !quoted;
}

bool ScriptRunner::runLine(const std::string& line, std::string& error) {
    Words words;
    if (!split(line, words)) {
        error = "a quote is not closed";
        return false;
    }
    if (words.empty() || words[0][0] == '#') {
        return true;
    }
    if (auto verb = verbs_.find(words[0]); verb != verbs_.end()) {
        return verb->second(Words(words.begin() + 1, words.end()), error);
    }
    KStringArray result;
    if (KStatus status = KGlobal::executeCommand(line.c_str(), &result); !status) {
        error = status.errorString().str();
        return false;
    }
    for (unsigned int i = 0; i < result.length(); ++i) {
        out_ << result[i].str() << '\n';
    }
    return true;
}

bool ScriptRunner::run(std::istream& script, const std::string& name, std::string& error) {
    std::string line;
    for (int number = 1; std::getline(script, line); ++number) {
        std::string reason;
        if (!runLine(line, reason)) {
            error = fmt::format("{}:{}: {}", name, number, reason.empty() ? "failed" : reason);
            return false;
        }
    }
    return true;
}

} // namespace KovaHost
