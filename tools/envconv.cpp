// envconv: converts a configuration file between its XML and KTL forms, chosen by the files'
// extensions, or prints the tree a file holds.
//
//   envconv [--validate] [--indent TEXT] [--dtd FILE] INPUT OUTPUT
//   envconv [--validate] print INPUT
//
// Exit status: 0 on success, 1 when a file can't be read or written, 2 for a wrong command line.
#include <ktl/envKtlReader.h>
#include <ktl/envKtlWriter.h>
#include <ktl/envXmlReader.h>
#include <ktl/envXmlWriter.h>
#include <ktl/environment.h>
#include <tclap/CmdLine.h>
#include <util/dtException.h>

#include <cctype>
#include <fstream>
#include <iostream>
#include <memory>
#include <string>

using namespace KORRti;

namespace {

enum class Form { Unknown, Xml, Ktl };

// The form a file name's extension names, compared without regard to case.
Form formOf(const std::string& file) {
  const std::string::size_type dot = file.find_last_of('.');
  const std::string::size_type slash = file.find_last_of('/');
  if (dot == std::string::npos || (slash != std::string::npos && dot < slash)) return Form::Unknown;
  std::string extension = file.substr(dot + 1);
  for (char& c : extension) c = static_cast<char>(std::tolower(static_cast<unsigned char>(c)));
  if (extension == "xml") return Form::Xml;
  if (extension == "ktl") return Form::Ktl;
  return Form::Unknown;
}

int usageError(const std::string& text) {
  std::cerr << "envconv: " << text << "\n";
  return 2;
}

int failure(const std::string& text) {
  std::cerr << "envconv: " << text << "\n";
  return 1;
}

// Reads file in the form its extension names; false with a message on standard error when
// that failed.
bool readTree(const std::string& file, bool validate, DtEnvironment& tree) {
  try {
    bool ok = false;
    if (formOf(file) == Form::Xml) {
      DtEnvXMLReader reader(validate);
      tree = reader.readFile(file.c_str(), ok);
    } else {
      DtEnvKTLReader reader;
      tree = reader.readFile(file.c_str(), ok);
    }
    if (!ok) {
      failure("cannot read '" + file + "'");
      return false;
    }
    return true;
  } catch (const DtException& e) {
    // libxml2's messages end with a line end of their own.
    std::string message = e.message();
    while (!message.empty() && message.back() == '\n') message.pop_back();
    failure("'" + file + "': " + message);
    return false;
  }
}

bool writeTree(DtEnvironment& tree, const std::string& file, const std::string& indent,
               const std::string& dtd) {
  // The KTL writer does not notice a file it can't open: find out first.
  {
    std::ofstream probe(file, std::ios::app);
    if (!probe) {
      failure("cannot write '" + file + "'");
      return false;
    }
  }
  DtString rootName;
  if (DtEnvNamedList* root = DtEnvNamedList::castToNamedList(tree.root())) rootName = root->name();
  std::unique_ptr<DtEnvWriter> writer;
  if (formOf(file) == Form::Xml) {
    auto xml = dtd.empty() ? std::make_unique<DtEnvXMLWriter>(rootName)
                           : std::make_unique<DtEnvXMLWriter>(rootName, dtd.c_str());
    xml->setIndentation(indent.c_str());
    writer = std::move(xml);
  } else {
    writer = std::make_unique<DtEnvKTLWriter>();
  }
  if (!writer->writeFile(tree, file.c_str())) {
    failure("cannot write '" + file + "'");
    return false;
  }
  return true;
}

}  // namespace

int main(int argc, char** argv) {
  std::string first;
  std::string second;
  bool validate = false;
  std::string indent;
  std::string dtd;
  try {
    TCLAP::CmdLine cmd(
        "Converts a configuration file between its XML (.xml) and KTL (.ktl) forms, by the "
        "files' extensions, or prints its tree with: envconv print FILE",
        ' ', "1.0");
    cmd.setExceptionHandling(false);
    TCLAP::SwitchArg validateArg("", "validate", "Validate XML input against its DTD", cmd);
    TCLAP::ValueArg<std::string> indentArg("", "indent",
                                           "Indentation of XML output (default two blanks; "
                                           "empty for none)",
                                           false, "  ", "TEXT", cmd);
    TCLAP::ValueArg<std::string> dtdArg(
        "", "dtd", "Write a document type declaration naming this DTD into XML output", false, "",
        "FILE", cmd);
    TCLAP::UnlabeledValueArg<std::string> firstArg("input", "The file to read, or print", true, "",
                                                   "INPUT", cmd);
    TCLAP::UnlabeledValueArg<std::string> secondArg(
        "output", "The file to write (or, after print, the file to read)", false, "", "OUTPUT",
        cmd);
    cmd.parse(argc, argv);
    first = firstArg.getValue();
    second = secondArg.getValue();
    validate = validateArg.getValue();
    indent = indentArg.getValue();
    dtd = dtdArg.getValue();
  } catch (const TCLAP::ArgException& e) {
    return usageError(e.error() + " (" + e.argId() + "); see envconv --help");
  } catch (const TCLAP::ExitException& e) {
    return e.getExitStatus();  // after --help or --version
  }

  const bool print = first == "print";
  const std::string input = print ? second : first;
  const std::string output = print ? std::string() : second;
  if (input.empty()) return usageError(print ? "print needs a file" : "no input file given");
  if (formOf(input) == Form::Unknown) return usageError("'" + input + "' is neither .xml nor .ktl");
  if (!print && output.empty()) return usageError("no output file given");
  if (!print && formOf(output) == Form::Unknown)
    return usageError("'" + output + "' is neither .xml nor .ktl");

  DtEnvironment tree;
  if (!readTree(input, validate, tree)) return 1;
  if (print) {
    std::cout << tree;
    return std::cout.good() ? 0 : 1;
  }
  return writeTree(tree, output, indent, dtd) ? 0 : 1;
}
