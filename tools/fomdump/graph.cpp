#include "fomdump/graph.h"

#include <map>
#include <string>
#include <vector>

namespace fomdump {

namespace {

// A DOT string, quoted, with its quotes and backslashes escaped and line ends kept as "\n".
std::string quoted(const std::string& text) {
  std::string out = "\"";
  for (char c : text) {
    if (c == '"' || c == '\\') {
      out += '\\';
      out += c;
    } else if (c == '\n') {
      out += "\\n";
    } else {
      out += c;
    }
  }
  return out + "\"";
}

// The file name without its directory.
std::string baseName(const std::string& file) {
  return file.substr(file.find_last_of('/') + 1);
}

// The last part of a dotted class name.
std::string shortName(const std::string& name) {
  return name.substr(name.find_last_of('.') + 1);
}

template <typename Class>
void classTree(std::string& out, const std::vector<Class>& classes,
               const std::map<std::string, std::string>& modules, const char* prefix,
               const char* shape) {
  for (const Class& item : classes) {
    auto module = modules.find(item.name);
    std::string label = shortName(item.name);
    if (module != modules.end()) label += "\n" + baseName(module->second);
    out += "  " + quoted(prefix + item.name) + " [shape=" + shape + ", label=" + quoted(label) +
           "];\n";
    if (!item.parent.empty()) {
      out += "  " + quoted(prefix + item.parent) + " -> " + quoted(prefix + item.name) + ";\n";
    }
  }
}

}  // namespace

std::string moduleGraph(const Federation& federation) {
  std::string out = "digraph modules {\n  rankdir=BT;\n  node [shape=box];\n";
  for (size_t at : federation.order) {
    const Module& module = federation.modules[at];
    // The file names the node; the model name, often long, is its tooltip.
    std::string tooltip = module.model ? module.model->modelName : std::string();
    out += "  " + quoted(module.file) + " [label=" + quoted(baseName(module.file)) +
           ", tooltip=" + quoted(tooltip.empty() ? module.file : tooltip) + "];\n";
  }
  for (const Resolution& resolution : federation.resolutions) {
    const std::string& from = federation.modules[resolution.module].file;
    if (resolution.resolved) {
      out +=
          "  " + quoted(from) + " -> " + quoted(federation.modules[resolution.target].file) + ";\n";
    } else {
      // What names no loaded module stands apart, dashed.
      const std::string missing = "missing: " + resolution.reference;
      out += "  " + quoted(missing) + " [style=dashed, label=" + quoted(resolution.reference) +
             "];\n  " + quoted(from) + " -> " + quoted(missing) + " [style=dashed];\n";
    }
  }
  return out + "}\n";
}

std::string classGraph(const MergedModel& merged) {
  std::string out = "digraph classes {\n  rankdir=LR;\n";
  classTree(out, merged.model.objects, merged.objectModules, "object:", "box");
  classTree(out, merged.model.interactions, merged.interactionModules, "interaction:", "ellipse");
  return out + "}\n";
}

}  // namespace fomdump
