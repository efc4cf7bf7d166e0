#ifndef TOOLS_FOMDUMP_GRAPH_H
#define TOOLS_FOMDUMP_GRAPH_H

// fomdump's pictures of a federation, as Graphviz DOT text: the modules with an edge from each
// to every module it depends on, and the merged class hierarchy (object and interaction
// classes), each class labelled with the module that declared it.
#include <string>

#include "fomdump/federation.h"
#include "fomdump/merge.h"

namespace fomdump {

std::string moduleGraph(const Federation& federation);
std::string classGraph(const MergedModel& merged);

}  // namespace fomdump

#endif
