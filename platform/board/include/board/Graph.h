#pragma once

#include <board/BoardExport.h>
#include <functional>
#include <map>
#include <orsel/Value.h>
#include <string>
#include <vector>

namespace ZelvaneBoard {

// Values by port name: a graph's inputs or outputs, or an operator's.
using PortValues = std::map<std::string, Orsel::Value>;

// The graph a board carries: operators with named inputs and outputs, wired to each other and
// to the board's ports. A wire goes from "port" (a board input) or "operator.output" to
// "port" (a board output) or "operator.input". Running the graph evaluates operators in
// dependency order and gives every board output wired to something its value.
//
// Built-in operators:
//  - "passThrough": input "in", output "out", the same value.
//  - "mergeObjects": input "objects" (an object or an array of objects), output "object": one
//    new object holding the properties of all of them, in order; a later object's property
//    replaces an earlier one of the same name. Null entries are skipped.
//  - "transformPoints": inputs "objects" (an object or an array of objects) and "transform"
//    (a "Geometry::Transform::GraphTransforms" value), output "objects" of the same shape:
//    copies whose point positions are multiplied by the matrix (row vectors, translation in
//    row 3). Objects without point positions pass unchanged; inputs are never changed.
//  - "strandsToTubes": inputs "strands" (strand objects), "radius" and "sides" (optional),
//    output "meshes": an array with one tube mesh per strand object (see StrandTubes.h).
//
// A C++ body (setBody) replaces operators and wires: it is given the board's inputs and
// returns its outputs.
//
// Editing happens on one thread while no evaluation runs; running is const and may happen on
// several threads at once.
class BOARD_API Graph {
public:
    using Body = std::function<PortValues(const PortValues& inputs)>;

    // Adds an operator of a built-in kind; false for an unknown kind or a taken name.
    bool addOperator(const std::string& name, const std::string& kind);
    // Adds a wire; false when an operator end names no operator or no port of it, or the
    // destination is fed already.
    bool connect(const std::string& from, const std::string& to);
    void setBody(Body body);

    // The outputs for `inputs`. Sets `error` (and gives no outputs) when the wires form a
    // cycle or an operator fails.
    PortValues run(const PortValues& inputs, std::string* error = nullptr) const;

private:
    struct Operator {
        std::string name;
        std::string kind;
    };
    struct Wire {
        std::string from;
        std::string to;
    };

    const Operator* findOperator(const std::string& name) const;
    bool endExists(const std::string& end, bool asSource) const;

    std::vector<Operator> operators_;
    std::vector<Wire> wires_;
    Body body_;
};

} // namespace ZelvaneBoard
