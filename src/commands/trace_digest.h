// What a modeller asks a trace first: what was called with which inputs, what came out, why it failed, and the main
// steps on the way.
//
//     for (const CallDigest& call : digest(tree)) std::cout << call.function << " = " << call.result;
#pragma once

#include "commands/trace_tree.h"

#include <optional>
#include <string>
#include <vector>

namespace qx {

/// One input as the function understood it.
struct InputDigest {
    std::string name;
    std::vector<std::string> values; ///< one, or those of a list
    bool is_list = false;
    bool is_default = false; ///< the cell was omitted
    std::string note;        ///< words of a default, and warnings
    std::string description;
};

/// A routine that the function has called itself.
struct StepDigest {
    std::string name;
    int times = 0;
    std::string last;                 ///< what the last call returned
    std::string argument;             ///< its only argument that is a number, if it has one, as the rate of a trial
    double least = 0.0, most = 0.0;   ///< over all calls
    std::vector<std::string> details; ///< what the last call noted, of several calls
};

struct CallDigest {
    std::size_t node = 0; ///< of the tree
    std::string function;
    std::vector<std::string> results; ///< several if a list was returned
    bool failed = false;
    std::string reason;         ///< of the failure, in one sentence
    std::size_t error_node = 0; ///< of the failure
    std::vector<InputDigest> inputs;
    std::vector<std::string> solving; ///< what a solver reports: tolerance, success and iterations
    std::vector<StepDigest> steps;
    std::vector<std::string> warnings; ///< each once
};

/// The worksheet calls of a trace in their order, of very many the last ones.
std::vector<CallDigest> digest(const TraceTree& tree);

/// The reason in one sentence, of an error's description such as "Error LIB05: Root not bracketed  \nFunction: ...".
std::string reason_of(std::string_view description);

} // namespace qx
