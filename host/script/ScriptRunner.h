#pragma once

#include <functional>
#include <iosfwd>
#include <map>
#include <string>
#include <vector>

namespace KovaHost {

// Runs scripts of host commands, one command per line, so that scenes and checks can be
// written without C++. Blank lines and lines starting with '#' are skipped; words are
// separated by blanks, and double quotes keep blanks inside a word.
//
// Script verbs (see docs/user-guide.md for the full list):
//   load-plugin [PATH]               bind a translation library (default: the plug-in
//                                    installed beside kova)
//   board NAME                       create a board node
//   port BOARD NAME in|out TYPE [KEY=VALUE ...]
//                                    add a graph port; TYPE is object, object[], time,
//                                    transforms or sceneinfo; KEY=VALUE are port options
//   operator BOARD NAME KIND         add a graph operator (passThrough, mergeObjects,
//                                    transformPoints, strandsToTubes)
//   wire BOARD FROM TO               wire ports and operators ("port", "operator.input")
//   evaluate BOARD                   evaluate a board now
//   print PLUG                       print a plug's value (graph objects in outline)
//   expect PLUG TEXT                 fail unless the plug's printed value is TEXT
//   echo TEXT...                     print the words
// Any other line is a host command (createNode, setAttr, connectAttr, getAttr, sets, ls,
// rename, delete, ...); its results are printed one per line. Further verbs are added by the
// program through addVerb; `kova run` adds
//   import FILE                      import a file's meshes and curves
//   export FILE [NODE ...]           export the named nodes, or every mesh and curve
class ScriptRunner {
public:
    using Words = std::vector<std::string>;
    // A verb gets the words after its name; returns false with `error` set on failure.
    using Verb = std::function<bool(const Words& words, std::string& error)>;

    explicit ScriptRunner(std::ostream& out);

    void addVerb(const std::string& name, Verb verb);

    // Runs every line of `script` in order and stops at the first failure, reporting it as
    // "NAME:LINE: reason" in `error`.
    bool run(std::istream& script, const std::string& name, std::string& error);
    // Runs one line.
    bool runLine(const std::string& line, std::string& error);

    // The words of a line; false when a quote is not closed.
    static bool split(const std::string& line, Words& words);

private:
    std::ostream& out_;
    std::map<std::string, Verb> verbs_;
};

// The text `print` shows for a plug: a number, string, matrix, the outline of the graph
// objects of a ZelData, or a summary of mesh and curve data. Empty when the plug is unknown.
std::string plugText(const std::string& plugName, std::string& error);

} // namespace KovaHost
