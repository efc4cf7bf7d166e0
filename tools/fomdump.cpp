// fomdump: reads a FOM file with the library's readers and prints the model they deliver.
//
// The program is a host of the reader interface: its target writes down every space, class,
// attribute and parameter it is told about, in the order it is told, and prints them as an
// indented tree or as JSON.
#include <tclap/CmdLine.h>

#include <cstdio>
#include <iostream>
#include <map>
#include <memory>
#include <sstream>
#include <string>
#include <vector>

#include <ktl/fedReader.h>
#include <ktl/fedReader13.h>
#include <util/notify.h>

namespace {

using namespace KORRti;

const char kDescription[] =
    "Reads a federation object model file and prints the routing spaces, the object classes "
    "with their attributes and the interaction classes with their parameters, as the reader "
    "delivers them. The format is told by the extension and, for XML files, by the content. "
    "HLA 1.3 FED files (.fed, .omt, .ktl) are read; the IEEE 1516 XML formats are recognised "
    "but not read yet. Exit status: 0 read, 1 no such file, 2 the file is wrong, 3 a format "
    "that is not read yet, 64 a wrong command line.";

const int kExitRead = 0;
const int kExitNoFile = 1;
const int kExitWrongFile = 2;
const int kExitNotRead = 3;
const int kExitUsage = 64;

struct Attribute {
  std::string name;
  DtTransportType transport;
  DtOrderType order;
  std::string space;  // empty for none
};

struct ObjectClass {
  std::string name;
  std::string parent;  // empty at the root
  std::vector<Attribute> attributes;
};

struct InteractionClass {
  std::string name;
  std::string parent;
  DtTransportType transport;
  DtOrderType order;
  std::string space;
  std::vector<std::string> parameters;
};

struct Space {
  std::string name;
  std::vector<std::string> dimensions;
};

// The target: everything it is told, in order. Names are copied, since the reader's texts die
// with each call.
class ModelRecorder : public DtFedTarget {
 public:
  std::vector<Space> spaces;
  std::vector<ObjectClass> objects;
  std::vector<InteractionClass> interactions;

  bool addSpace(const char* name) override {
    spaces.push_back({text(name), {}});
    return true;
  }
  bool addSpaceDimension(const char* space, const char* dimension) override {
    for (Space& known : spaces) {
      if (known.name == text(space)) known.dimensions.push_back(text(dimension));
    }
    return true;
  }
  bool addObjectClass(const char* name, const char* parent) override {
    objects.push_back({text(name), text(parent), {}});
    return true;
  }
  bool addSpaceAttribute(const char* className, const char* name, DtTransportType transport,
                         DtOrderType order, const char* space) override {
    if (ObjectClass* owner = findObject(text(className))) {
      owner->attributes.push_back({text(name), transport, order, text(space)});
    }
    return true;
  }
  bool addInteractionClass(const char* name, const char* parent, DtTransportType transport,
                           DtOrderType order, const char* space) override {
    interactions.push_back({text(name), text(parent), transport, order, text(space), {}});
    return true;
  }
  bool addParameter(const char* className, const char* name) override {
    for (auto it = interactions.rbegin(); it != interactions.rend(); ++it) {
      if (it->name == text(className)) {
        it->parameters.push_back(text(name));
        break;
      }
    }
    return true;
  }

 private:
  static std::string text(const char* value) { return value ? value : ""; }
  ObjectClass* findObject(const std::string& name) {
    for (auto it = objects.rbegin(); it != objects.rend(); ++it) {
      if (it->name == name) return &*it;
    }
    return nullptr;
  }
};

const char* transportName(DtTransportType transport) {
  if (transport == DtTransportBestEffort) return "best_effort";
  if (transport == DtTransportReliable) return "reliable";
  return "invalid";
}

const char* orderName(DtOrderType order) {
  if (order == DtOrderReceive) return "receive";
  if (order == DtOrderTimestamp) return "timestamp";
  return "invalid";
}

// The depth of each class in its tree: a class's parent was delivered before it.
template <typename Class>
std::vector<int> depths(const std::vector<Class>& classes) {
  std::map<std::string, int> known;
  std::vector<int> result;
  for (const Class& item : classes) {
    auto parent = known.find(item.parent);
    int depth = item.parent.empty() || parent == known.end() ? 0 : parent->second + 1;
    known[item.name] = depth;
    result.push_back(depth);
  }
  return result;
}

// Each class followed by its subclasses, in delivery order, so the indentation shows the tree
// even where a file mixes attributes and subclasses.
template <typename Class>
std::vector<size_t> treeOrder(const std::vector<Class>& classes) {
  std::map<std::string, std::vector<size_t>> children;
  std::vector<size_t> roots;
  std::map<std::string, bool> seen;
  for (size_t i = 0; i < classes.size(); ++i) {
    if (!classes[i].parent.empty() && seen.count(classes[i].parent)) {
      children[classes[i].parent].push_back(i);
    } else {
      roots.push_back(i);
    }
    seen[classes[i].name] = true;
  }
  std::vector<size_t> order;
  std::vector<size_t> stack(roots.rbegin(), roots.rend());
  while (!stack.empty()) {
    size_t at = stack.back();
    stack.pop_back();
    order.push_back(at);
    auto found = children.find(classes[at].name);
    if (found != children.end())
      stack.insert(stack.end(), found->second.rbegin(), found->second.rend());
  }
  return order;
}

void printText(const std::string& fileName, DtFomType type, const ModelRecorder& model) {
  std::ostringstream out;
  out << "FOM file: " << fileName << "\n";
  out << "Format: " << DtFomTypeName(type) << "\n";
  out << "Routing spaces: " << model.spaces.size() << "\n";
  for (const Space& space : model.spaces) {
    out << "  space " << space.name << "\n";
    for (const std::string& dimension : space.dimensions)
      out << "    dimension " << dimension << "\n";
  }
  out << "Object classes: " << model.objects.size() << "\n";
  std::vector<int> objectDepths = depths(model.objects);
  for (size_t i : treeOrder(model.objects)) {
    const ObjectClass& item = model.objects[i];
    std::string indent(2 + 2 * objectDepths[i], ' ');
    out << indent << "class " << item.name << "\n";
    for (const Attribute& attribute : item.attributes) {
      out << indent << "  attribute " << attribute.name << "  transport "
          << transportName(attribute.transport) << "  order " << orderName(attribute.order);
      if (!attribute.space.empty()) out << "  space " << attribute.space;
      out << "\n";
    }
  }
  out << "Interaction classes: " << model.interactions.size() << "\n";
  std::vector<int> interactionDepths = depths(model.interactions);
  for (size_t i : treeOrder(model.interactions)) {
    const InteractionClass& item = model.interactions[i];
    std::string indent(2 + 2 * interactionDepths[i], ' ');
    out << indent << "class " << item.name << "  transport " << transportName(item.transport)
        << "  order " << orderName(item.order);
    if (!item.space.empty()) out << "  space " << item.space;
    out << "\n";
    for (const std::string& parameter : item.parameters) {
      out << indent << "  parameter " << parameter << "\n";
    }
  }
  std::fputs(out.str().c_str(), stdout);
}

std::string json(const std::string& text) {
  std::string out = "\"";
  for (unsigned char c : text) {
    switch (c) {
      case '"':
        out += "\\\"";
        break;
      case '\\':
        out += "\\\\";
        break;
      case '\n':
        out += "\\n";
        break;
      case '\r':
        out += "\\r";
        break;
      case '\t':
        out += "\\t";
        break;
      default:
        if (c < 0x20) {
          char escaped[8];
          std::snprintf(escaped, sizeof escaped, "\\u%04x", c);
          out += escaped;
        } else {
          out += static_cast<char>(c);
        }
    }
  }
  return out + "\"";
}

std::string jsonOrNull(const std::string& text) {
  return text.empty() ? "null" : json(text);
}

void printJson(const std::string& fileName, DtFomType type, const ModelRecorder& model) {
  std::ostringstream out;
  out << "{\n  \"file\": " << json(fileName) << ",\n  \"format\": " << json(DtFomTypeName(type))
      << ",\n  \"spaces\": [";
  for (size_t i = 0; i < model.spaces.size(); ++i) {
    const Space& space = model.spaces[i];
    out << (i ? ",\n" : "\n") << "    {\"name\": " << json(space.name) << ", \"dimensions\": [";
    for (size_t d = 0; d < space.dimensions.size(); ++d) {
      out << (d ? ", " : "") << json(space.dimensions[d]);
    }
    out << "]}";
  }
  out << (model.spaces.empty() ? "]" : "\n  ]") << ",\n  \"objectClasses\": [";
  for (size_t i = 0; i < model.objects.size(); ++i) {
    const ObjectClass& item = model.objects[i];
    out << (i ? ",\n" : "\n") << "    {\"name\": " << json(item.name)
        << ", \"parent\": " << jsonOrNull(item.parent) << ", \"attributes\": [";
    for (size_t a = 0; a < item.attributes.size(); ++a) {
      const Attribute& attribute = item.attributes[a];
      out << (a ? ", " : "") << "{\"name\": " << json(attribute.name)
          << ", \"transport\": " << json(transportName(attribute.transport))
          << ", \"order\": " << json(orderName(attribute.order))
          << ", \"space\": " << jsonOrNull(attribute.space) << "}";
    }
    out << "]}";
  }
  out << (model.objects.empty() ? "]" : "\n  ]") << ",\n  \"interactionClasses\": [";
  for (size_t i = 0; i < model.interactions.size(); ++i) {
    const InteractionClass& item = model.interactions[i];
    out << (i ? ",\n" : "\n") << "    {\"name\": " << json(item.name)
        << ", \"parent\": " << jsonOrNull(item.parent)
        << ", \"transport\": " << json(transportName(item.transport))
        << ", \"order\": " << json(orderName(item.order))
        << ", \"space\": " << jsonOrNull(item.space) << ", \"parameters\": [";
    for (size_t p = 0; p < item.parameters.size(); ++p) {
      out << (p ? ", " : "") << json(item.parameters[p]);
    }
    out << "]}";
  }
  out << (model.interactions.empty() ? "]" : "\n  ]") << "\n}\n";
  std::fputs(out.str().c_str(), stdout);
}

const char* formatDescription(DtFomType type) {
  switch (type) {
    case DtFomType1516:
      return "IEEE 1516-2000 XML";
    case DtFomTypeEvolved:
      return "IEEE 1516-2010 (HLA Evolved) XML";
    case DtFomType2025:
      return "IEEE 1516-2025 (HLA 4) XML";
    default:
      return "unknown";
  }
}

int run(int argc, char** argv) {
  std::string fileName;
  bool verbose = false;
  bool asJson = false;
  try {
    TCLAP::CmdLine cmd(kDescription, ' ', "1.0");
    TCLAP::SwitchArg verboseArg("v", "verbose", "Show the readers' progress lines", cmd, false);
    TCLAP::SwitchArg jsonArg("j", "json", "Print the model as JSON", cmd, false);
    TCLAP::UnlabeledValueArg<std::string> fileArg("file", "The FOM file to read", true, "", "file",
                                                  cmd);
    cmd.setExceptionHandling(false);
    cmd.parse(argc, argv);
    fileName = fileArg.getValue();
    verbose = verboseArg.getValue();
    asJson = jsonArg.getValue();
  } catch (TCLAP::ExitException& e) {
    return e.getExitStatus();
  } catch (TCLAP::ArgException& e) {
    std::fprintf(stderr, "fomdump: %s\nUsage: fomdump [-v] [--json] FILE (see fomdump --help)\n",
                 e.error().c_str());
    return kExitUsage;
  }
  if (verbose && DtNotifyLevel < 3) DtNotifyLevel = 3;

  DtFomType type = DtFedReader::checkFomType(fileName.c_str());
  if (type == DtFomTypeUnknown) {
    std::fprintf(stderr, "fomdump: cannot open FOM file: %s\n", fileName.c_str());
    return kExitNoFile;
  }
  if (type != DtFomType13) {
    std::fprintf(stderr,
                 "fomdump: %s: %s format, which this version cannot read yet; only HLA 1.3 "
                 "FED files are read\n",
                 fileName.c_str(), formatDescription(type));
    return kExitNotRead;
  }

  DtFedReader13 reader;
  ModelRecorder model;
  int result = reader.readFed(fileName.c_str(), &model, 0, false, false);
  if (result == 1) {
    std::fprintf(stderr, "fomdump: cannot open FOM file: %s\n", fileName.c_str());
    return kExitNoFile;
  }
  if (result != 0) {
    const char* why = reader.lastError().isEmpty() ? "the file does not have the form of a FED file"
                                                   : reader.lastError().c_str();
    std::fprintf(stderr, "fomdump: %s: %s\n", fileName.c_str(), why);
    return kExitWrongFile;
  }
  if (asJson) {
    printJson(fileName, type, model);
  } else {
    printText(fileName, type, model);
  }
  return kExitRead;
}

}  // namespace

int main(int argc, char** argv) {
  return run(argc, argv);
}
