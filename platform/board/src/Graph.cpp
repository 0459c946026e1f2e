#include "Operators.h"

#include <algorithm>
#include <board/Graph.h>

namespace ZelvaneBoard {
namespace {

// "operator.port" split at its dot; a board port has an empty operator part.
std::pair<std::string, std::string> splitEnd(const std::string& end) {
    const auto dot = end.find('.');
    if (dot == std::string::npos) {
        return {std::string(), end};
    }
    return {end.substr(0, dot), end.substr(dot + 1)};
}

bool contains(const std::vector<std::string>& names, const std::string& name) {
    return std::find(names.begin(), names.end(), name) != names.end();
}

} // namespace

bool Graph::addOperator(const std::string& name, const std::string& kind) {
    if (name.empty() || name.find('.') != std::string::npos || findOperator(name) ||
        !detail::findOperatorKind(kind)) {
        return false;
    }
    operators_.push_back({name, kind});
    return true;
}

bool Graph::connect(const std::string& from, const std::string& to) {
    if (!endExists(from, true) || !endExists(to, false)) {
        return false;
    }
    const bool fed =
        std::any_of(wires_.begin(), wires_.end(), [&](const Wire& wire) { return wire.to == to; });
    if (fed) {
        return false;
    }
    wires_.push_back({from, to});
    return true;
}

void Graph::setBody(Body body) {
    body_ = std::move(body);
}

const Graph::Operator* Graph::findOperator(const std::string& name) const {
    auto it = std::find_if(operators_.begin(), operators_.end(),
                           [&](const Operator& op) { return op.name == name; });
    return it == operators_.end() ? nullptr : &*it;
}

bool Graph::endExists(const std::string& end, bool asSource) const {
    const auto [opName, port] = splitEnd(end);
    if (port.empty()) {
        return false;
    }
    if (opName.empty()) {
        return true; // a board port
    }
    const Operator* op = findOperator(opName);
    if (!op) {
        return false;
    }
    const detail::OperatorKind* kind = detail::findOperatorKind(op->kind);
    return contains(asSource ? kind->outputs : kind->inputs, port);
}

PortValues Graph::run(const PortValues& inputs, std::string* error) const {
    if (body_) {
        return body_(inputs);
    }
    PortValues values = inputs; // board inputs by name, operator outputs as "op.port"
    std::vector<bool> done(operators_.size(), false);
    const auto ready = [&](const Operator& op) {
        return std::all_of(wires_.begin(), wires_.end(), [&](const Wire& wire) {
            const std::string source = splitEnd(wire.from).first;
            if (splitEnd(wire.to).first != op.name || source.empty()) {
                return true;
            }
            const auto index = static_cast<std::size_t>(findOperator(source) - operators_.data());
            return static_cast<bool>(done[index]);
        });
    };
    for (std::size_t finished = 0; finished < operators_.size();) {
        const std::size_t before = finished;
        for (std::size_t i = 0; i < operators_.size(); ++i) {
            const Operator& op = operators_[i];
            if (done[i] || !ready(op)) {
                continue;
            }
            PortValues opInputs;
            for (const Wire& wire : wires_) {
                const auto [target, port] = splitEnd(wire.to);
                auto value = values.find(wire.from);
                if (target == op.name && value != values.end()) {
                    opInputs[port] = value->second;
                }
            }
            for (auto& [port, value] : detail::findOperatorKind(op.kind)->run(opInputs)) {
                values[op.name + "." + port] = std::move(value);
            }
            done[i] = true;
            ++finished;
        }
        if (finished == before) {
            if (error) {
                *error = "the graph's wires form a cycle";
            }
            return {};
        }
    }
    PortValues outputs;
    for (const Wire& wire : wires_) {
        auto value = values.find(wire.from);
        if (splitEnd(wire.to).first.empty() && value != values.end()) {
            outputs[wire.to] = value->second;
        }
    }
    return outputs;
}

} // namespace ZelvaneBoard
