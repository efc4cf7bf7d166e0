#include <ktl/envKtlWriter.h>

#include <string>

namespace KORRti {

DtEnvKTLWriter::DtEnvKTLWriter() = default;

DtEnvKTLWriter::~DtEnvKTLWriter() = default;

bool DtEnvKTLWriter::writeFile(DtEnvironment& tree, const DtString& file) {
  env = &tree;
  root = tree.root();
  if (!root) {
    env = nullptr;
    return false;
  }
  depth = 0;
  std::ofstream out(file.c_str());
  writeValue(root, out);
  env = nullptr;
  // The writer does not keep the tree alive once it is written.
  root.reset();
  out.close();
  return true;
}

// Line ends are plain '\n': the bytes std::endl would write, without a flush per line.
void DtEnvKTLWriter::writeValue(DtEnvValueSP node, std::ofstream& out) {
  if (!node) return;
  const std::string pad(static_cast<std::size_t>(depth > 0 ? depth : 0), ' ');
  if (DtEnvObject* object = DtEnvObject::castToObject(node)) {
    out << '\n' << pad << "(";
    out << object->name() << " ";
    if (object->name() != object->type()) out << object->type();
    if (!object->value().isEmpty()) out << "( \"" << object->value() << "\" )";
    depth += 3;
    for (DtEnvValueSP c = object->first(); c; c = object->next(c)) writeValue(c, out);
    depth -= 3;
    out << '\n' << pad << ")";
  } else if (DtEnvNamedList* named = DtEnvNamedList::castToNamedList(node)) {
    out << '\n' << pad << "(";
    out << named->name() << " ";
    out << '"' << named->value() << '"';
    for (DtEnvValueSP c = named->first(); c; c = named->next(c)) writeValue(c, out);
    out << ")";
  } else if (DtEnvList::isList(node)) {
    out << '"' << node->value() << '"';
  } else {
    out << "\n;" << node->value();
  }
}

}  // namespace KORRti
