#include "fomdump/fedCheck.h"

#include <strings.h>

#include <algorithm>
#include <cctype>
#include <cstdio>
#include <cstring>
#include <memory>
#include <string>
#include <unordered_map>
#include <utility>
#include <vector>

#include <ktl/atom.h>
#include <ktl/fedReader13.h>
#include <ktl/ktlEnvironment.h>
#include <ktl/list.h>
#include <ktl/lstream.h>
#include <ktl/read.h>
#include <util/dtException.h>
#include <util/notify.h>

#include "fomdump/print.h"

namespace fomdump {

using namespace KORRti;
using DtFed13Form::atomText;
using DtFed13Form::element;
using DtFed13Form::head;
using DtFed13Form::length;
using Kind = FedDeviation::Kind;

namespace {

// The reader's string stream over the file's text, counting every line (the library's string
// stream counts only comment lines) and keeping its place in the text.
class PlacedStream : public DtlStringInputStream {
 public:
  explicit PlacedStream(const char* text) : DtlStringInputStream(text) {}
  int fgetc() override {
    int c = DtlStringInputStream::fgetc();
    ++offset_;
    if (c == '\n') ++line_;
    return c;
  }
  int ungetc(int c) override {
    if (offset_ > 0) {
      --offset_;
      if (c == '\n') --line_;
    }
    return DtlStringInputStream::ungetc(c);
  }
  int lineCount() override { return line_; }
  void incLineCount() override {}
  size_t offset() const { return offset_; }

 private:
  int line_ = 1;
  size_t offset_ = 0;
};

// Where a list stands: the line of its "(", and its bytes from "(" to past ")".
struct Span {
  long line = 0;
  size_t begin = 0;
  size_t end = 0;
};

class SpanListener : public DtlReadListener {
 public:
  void listOpened(DtlInputStream& stream) override {
    auto& placed = static_cast<PlacedStream&>(stream);
    open.push_back({placed.lineCount(), placed.offset() - 1, 0});
  }
  void listClosed(DtlInputStream& stream, DtlObjPtr const& list) override {
    Span span = open.back();
    open.pop_back();
    span.end = static_cast<PlacedStream&>(stream).offset();
    if (list->tag() == DtlConsTag) spans[list.get()] = span;
  }
  std::vector<Span> open;  // the lists whose ")" has not come yet, outermost first
  std::unordered_map<const DtlObj*, Span> spans;
};

const char* symbolText(const DtlObjPtr& x) {
  return !x.isNull() && x->tag() == DtlSymbolTag ? x->pname() : nullptr;
}

bool isList(const DtlObjPtr& x) {
  return !x.isNull() && x->tag() == DtlConsTag;
}

std::string quoted(const char* text) {
  return std::string("\"") + (text ? text : "") + "\"";
}

// The words a section or a class holds, in the strict form's spelling.
const char* const theSections[] = {"Federation", "FEDversion", "spaces", "objects", "interactions"};
enum Section { kFederation, kVersion, kSpaces, kObjects, kInteractions, kSections };

class Checker {
 public:
  Checker(FedCheck& check, const SpanListener& listener)
      : check_(check), text_(check.text), spans_(listener.spans) {}

  void walkFed(const DtlObjPtr& form) {
    const Span* span = spanOf(form);
    if (!span) {
      note(1, "the file does not start with a list: a FED file is one list, (FED ...)",
           Kind::kUnmendable);
      return;
    }
    if (!keyword(form, "FED", span->line)) {
      const char* first = atomText(head(form));
      note(span->line,
           "the list starts with " + (first ? quoted(first) : std::string("no word")) +
               ", not FED: this is not an HLA 1.3 FED file",
           Kind::kUnmendable);
      return;
    }
    DtlObjPtr sections[kSections];
    size_t previousEnd = firstTokenEnd(span->begin);
    int lastSection = -1;
    bool ordered = true;
    for (DtlObjPtr rest = DtcCdr(form); isList(rest); rest = DtcCdr(rest)) {
      DtlObjPtr entry = DtcCar(rest);
      const Span* at = spanOf(entry);
      if (!at) {
        // Words (or empty lists) among the sections: a run of them is left out at once.
        const size_t runEnd = nextListBegin(rest, span->end - 1);
        if (previousEnd < runEnd) dropWords(previousEnd, runEnd, span->line);
        previousEnd = std::max(previousEnd, runEnd);
        continue;
      }
      int section = sectionOf(entry);
      if (section < 0) {
        const char* name = atomText(head(entry));
        note(at->line,
             "(" + std::string(name ? name : "...") +
                 " ...) has no place in a FED file: --fix leaves it out",
             Kind::kMendable);
        drop(*at);
      } else if (!sections[section].isNull()) {
        note(at->line,
             std::string("a second (") + theSections[section] + " ...): a FED file has one",
             Kind::kUnmendable);
      } else {
        keyword(entry, theSections[section], at->line);
        sections[section] = entry;
        if (section < lastSection && ordered) {
          ordered = false;
          note(at->line,
               std::string("(") + theSections[section] + " ...) comes after (" +
                   theSections[lastSection] +
                   " ...): a FED file has Federation, FEDversion, spaces, objects and "
                   "interactions in that order",
               Kind::kUnmendable);
        }
        lastSection = std::max(lastSection, section);
      }
      previousEnd = at->end;
    }
    for (int section : {kFederation, kVersion}) {
      if (sections[section].isNull()) {
        note(span->line,
             std::string("there is no (") + theSections[section] + " ...) in the FED list",
             Kind::kUnmendable);
      }
    }
    if (sections[kSpaces].isNull()) {
      addSpaces(sections, *span);
    } else {
      walkSpaces(sections[kSpaces]);
    }
    if (sections[kObjects].isNull()) {
      note(span->line, "there is no (objects (class ObjectRoot ...)) in the FED list",
           Kind::kUnmendable);
    } else {
      walkObjects(sections[kObjects]);
    }
    if (sections[kInteractions].isNull()) {
      note(span->line, "there is no (interactions (class InteractionRoot ...)) in the FED list",
           Kind::kUnmendable);
    } else {
      walkInteractions(sections[kInteractions]);
    }
  }

 private:
  void note(long line, const std::string& message, Kind kind) {
    check_.deviations.push_back({line, message, kind});
  }

  const Span* spanOf(const DtlObjPtr& x) const {
    if (!isList(x)) return nullptr;
    auto found = spans_.find(x.get());
    return found == spans_.end() ? nullptr : &found->second;
  }
  long lineOf(const DtlObjPtr& x, long otherwise) const {
    const Span* span = spanOf(x);
    return span ? span->line : otherwise;
  }

  // The line of a byte of the text, by the newlines before it (found once).
  long lineAt(size_t offset) {
    if (newlines_.empty()) {
      for (size_t at = text_.find('\n'); at != std::string::npos; at = text_.find('\n', at + 1)) {
        newlines_.push_back(at);
      }
      newlines_.push_back(std::string::npos);
    }
    return 1 + (std::lower_bound(newlines_.begin(), newlines_.end(), offset) - newlines_.begin());
  }

  // Past white space and comments from a byte on, as the reader passes them.
  size_t skipBlank(size_t at) const {
    while (at < text_.size()) {
      unsigned char c = static_cast<unsigned char>(text_[at]);
      if (c == ';') {
        while (at < text_.size() && text_[at] != '\n') ++at;
      } else if (std::isspace(c)) {
        ++at;
      } else {
        break;
      }
    }
    return at;
  }
  // Where the first element of a list starts, and where it ends when it is a word.
  size_t firstTokenStart(size_t listBegin) const { return skipBlank(listBegin + 1); }
  size_t firstTokenEnd(size_t listBegin) const {
    size_t at = firstTokenStart(listBegin);
    while (at < text_.size() && !std::isspace(static_cast<unsigned char>(text_[at])) &&
           text_[at] != '(' && text_[at] != ')') {
      ++at;
    }
    return at;
  }

  // Whether the list starts with the keyword, in any case. One written in another case is a
  // deviation that --fix mends by writing it as the reader wants it.
  bool keyword(const DtlObjPtr& list, const char* word, long line) {
    const char* text = symbolText(head(list));
    if (!text || strcasecmp(text, word) != 0) return false;
    if (std::strcmp(text, word) == 0) return true;
    const Span* span = spanOf(list);
    size_t at = span ? firstTokenStart(span->begin) : text_.size();
    const size_t size = std::strlen(word);
    const bool found = at + size <= text_.size() && text_.compare(at, size, text) == 0;
    if (found) check_.edits.push_back({at, at + size, word});
    note(line, quoted(text) + " must be written " + quoted(word) + ": keywords compare with case",
         found ? Kind::kMendable : Kind::kUnmendable);
    return true;
  }

  int sectionOf(const DtlObjPtr& entry) const {
    const char* text = symbolText(head(entry));
    if (!text) return -1;
    for (int i = 0; i < kSections; ++i) {
      if (strcasecmp(text, theSections[i]) == 0) return i;
    }
    return -1;
  }

  // Leaves a list out of the text: its whole line when nothing else stands on it.
  void drop(const Span& span) {
    size_t begin = span.begin;
    size_t end = span.end;
    size_t lineBegin = text_.rfind('\n', begin == 0 ? 0 : begin - 1);
    lineBegin = lineBegin == std::string::npos || begin == 0 ? 0 : lineBegin + 1;
    size_t lineEnd = text_.find('\n', end);
    if (lineEnd == std::string::npos) lineEnd = text_.size();
    auto blank = [&](size_t from, size_t to) {
      for (size_t i = from; i < to; ++i) {
        if (!std::isspace(static_cast<unsigned char>(text_[i]))) return false;
      }
      return true;
    };
    if (blank(lineBegin, begin) && blank(end, lineEnd)) {
      begin = lineBegin;
      end = lineEnd < text_.size() ? lineEnd + 1 : lineEnd;
    }
    check_.edits.push_back({begin, end, ""});
  }

  // Where the next list of a list's rest begins, or limit when no list follows.
  size_t nextListBegin(const DtlObjPtr& rest, size_t limit) const {
    for (DtlObjPtr at = DtcCdr(rest); isList(at); at = DtcCdr(at)) {
      if (const Span* span = spanOf(DtcCar(at))) return span->begin;
    }
    return limit;
  }

  // Words among the sections, between two lists: each is noted at its line, once per run of
  // words, and left out of the text, comments kept.
  void dropWords(size_t from, size_t to, long otherwise) {
    if (from >= to || to > text_.size()) {
      note(otherwise, "a word or an empty list has no place in a FED file", Kind::kUnmendable);
      return;
    }
    std::string kept;
    size_t first = std::string::npos;
    for (size_t at = from; at < to;) {
      char c = text_[at];
      if (c == ';') {
        size_t end = std::min(text_.find('\n', at), to);
        kept.append(text_, at, end - at);
        at = end;
      } else if (std::isspace(static_cast<unsigned char>(c))) {
        kept += c;
        ++at;
      } else {
        if (first == std::string::npos) first = at;
        if (c == '"') {
          size_t close = text_.find('"', at + 1);
          at = close == std::string::npos || close >= to ? to : close + 1;
        } else {
          ++at;
        }
        // A word goes with the blanks behind it on its line.
        if (at < to && std::isspace(static_cast<unsigned char>(text_[at])) == 0) continue;
        while (at < to && (text_[at] == ' ' || text_[at] == '\t')) ++at;
      }
    }
    if (first == std::string::npos) return;
    kept = withoutEmptiedLines(text_.substr(from, to - from), kept);
    size_t wordEnd = first;
    while (wordEnd < to && !std::isspace(static_cast<unsigned char>(text_[wordEnd]))) ++wordEnd;
    note(lineAt(first),
         quoted(text_.substr(first, wordEnd - first).c_str()) +
             " stands outside any section: a FED file holds only lists; --fix leaves it out",
         Kind::kMendable);
    check_.edits.push_back({from, to, kept});
  }

  // kept is original with its words taken out, every newline in place: a line that held words
  // and is left blank goes too. The first and last pieces belong to the lines of the lists
  // around the run, and stay.
  static std::string withoutEmptiedLines(const std::string& original, const std::string& kept) {
    auto pieces = [](const std::string& text) {
      std::vector<std::string> found;
      size_t at = 0;
      for (size_t end; (end = text.find('\n', at)) != std::string::npos; at = end + 1) {
        found.push_back(text.substr(at, end - at));
      }
      found.push_back(text.substr(at));
      return found;
    };
    auto blank = [](const std::string& text) {
      return std::all_of(text.begin(), text.end(),
                         [](char c) { return std::isspace(static_cast<unsigned char>(c)); });
    };
    std::vector<std::string> before = pieces(original);
    std::vector<std::string> after = pieces(kept);
    if (before.size() != after.size()) return kept;
    std::string result;
    for (size_t i = 0; i < after.size(); ++i) {
      const bool inner = i > 0 && i + 1 < after.size();
      if (inner && blank(after[i]) && !blank(before[i])) continue;
      result += after[i];
      if (i + 1 < after.size()) result += '\n';
    }
    return result;
  }

  // An empty (spaces) where the section is missing: before objects, with its indentation.
  void addSpaces(DtlObjPtr* sections, const Span& fed) {
    const Span* before = spanOf(sections[kObjects]);
    if (!before) before = spanOf(sections[kInteractions]);
    if (!before) {
      note(fed.line, "there is no (spaces ...) in the FED list", Kind::kUnmendable);
      return;
    }
    size_t lineBegin = text_.rfind('\n', before->begin == 0 ? 0 : before->begin - 1);
    lineBegin = lineBegin == std::string::npos ? 0 : lineBegin + 1;
    std::string indent = text_.substr(lineBegin, before->begin - lineBegin);
    bool blank = std::all_of(indent.begin(), indent.end(),
                             [](char c) { return std::isspace(static_cast<unsigned char>(c)); });
    check_.edits.push_back(
        {before->begin, before->begin, "(spaces)" + (blank ? "\n" + indent : std::string(" "))});
    note(before->line, "there is no (spaces ...) before this list: --fix adds an empty (spaces)",
         Kind::kMendable);
  }

  void walkSpaces(const DtlObjPtr& form) {
    const long line = lineOf(form, 0);
    for (DtlObjPtr rest = DtcCdr(form); isList(rest); rest = DtcCdr(rest)) {
      DtlObjPtr space = DtcCar(rest);
      const long at = lineOf(space, line);
      if (!isList(space) || !keyword(space, "space", at)) {
        note(at, "spaces holds only (space NAME (dimension NAME) ...) entries", Kind::kUnmendable);
        continue;
      }
      const char* name = atomText(element(space, 1));
      if (!name) {
        note(at, "a space needs a name", Kind::kUnmendable);
        continue;
      }
      check_.declared.addSpace(name);
      for (DtlObjPtr more = DtcCdr(DtcCdr(space)); isList(more); more = DtcCdr(more)) {
        DtlObjPtr dimension = DtcCar(more);
        const long dimensionLine = lineOf(dimension, at);
        if (!isList(dimension) || !keyword(dimension, "dimension", dimensionLine)) {
          note(dimensionLine, "space " + quoted(name) + " holds only (dimension NAME) entries",
               Kind::kUnmendable);
          continue;
        }
        const char* dimensionName = atomText(element(dimension, 1));
        if (length(dimension) != 2 || !dimensionName) {
          note(dimensionLine, "a dimension is (dimension NAME): one name, nothing more",
               Kind::kUnmendable);
          continue;
        }
        check_.declared.addSpaceDimension(name, dimensionName);
      }
    }
  }

  // The root class of objects or interactions: the one class the section holds.
  DtlObjPtr rootOf(const DtlObjPtr& section, const char* sectionName, const char* root) {
    const long line = lineOf(section, 0);
    const int count = length(section);
    if (count != 2) {
      note(line,
           std::string("(") + sectionName + " ...) must hold one class, " + root + ", and holds " +
               std::to_string(count < 1 ? 0 : count - 1) + " entries" +
               (count == 1 ? "" : ": its classes belong under " + std::string(root)),
           Kind::kUnmendable);
      return DtlObjPtr();
    }
    DtlObjPtr rootClass = element(section, 1);
    const long at = lineOf(rootClass, line);
    if (!isList(rootClass) || !keyword(rootClass, "class", at)) {
      note(at, std::string("(") + sectionName + " ...) must hold (class " + root + " ...)",
           Kind::kUnmendable);
      return DtlObjPtr();
    }
    const char* name = atomText(element(rootClass, 1));
    if (!name || strcasecmp(name, root) != 0) {
      note(at, "the root class is " + quoted(name) + ", not " + root, Kind::kUnmendable);
      return DtlObjPtr();
    }
    return rootClass;
  }

  void walkObjects(const DtlObjPtr& form) {
    DtlObjPtr root = rootOf(form, "objects", "ObjectRoot");
    if (!root.isNull()) walkObjectClass(root, "");
  }

  void walkInteractions(const DtlObjPtr& form) {
    DtlObjPtr root = rootOf(form, "interactions", "InteractionRoot");
    if (!root.isNull()) walkInteractionClass(root, "");
  }

  static std::string fullName(const std::string& parent, const char* name) {
    return parent.empty() ? std::string(name) : parent + "." + name;
  }

  // An entry of a class that is neither a member nor a class. CERTI's security levels are left
  // out by --fix; anything else would take a guess.
  void strayEntry(const DtlObjPtr& entry, long line, const std::string& className,
                  const char* members) {
    const char* name = symbolText(head(entry));
    const Span* span = spanOf(entry);
    if (name && span && strcasecmp(name, "Sec_Level") == 0) {
      note(line, "(" + std::string(name) + " ...) has no place in a FED file: --fix leaves it out",
           Kind::kMendable);
      drop(*span);
      return;
    }
    note(line,
         (name ? "(" + std::string(name) + " ...)" : std::string("an entry")) + " in class " +
             quoted(className.c_str()) + ": a class holds only (" + members +
             " ...) and (class ...)",
         Kind::kUnmendable);
  }

  // Transport and order of an attribute or interaction class (elements 2 and 3).
  void transportAndOrder(const DtlObjPtr& form, long line, const std::string& what,
                         DtTransportType& transport, DtOrderType& order) {
    const char* transportText = atomText(element(form, 2));
    const char* orderText = atomText(element(form, 3));
    transport = DtFed13Form::transportOf(transportText);
    order = DtFed13Form::orderOf(orderText);
    if (transport == DtTransportInvalid) {
      note(line,
           "transport " + quoted(transportText) + " of " + what +
               " is not reliable or best_effort: the reader warns and delivers it as -1",
           Kind::kWarned);
    }
    if (order == DtOrderInvalid) {
      note(line, "order " + quoted(orderText) + " of " + what + " is not receive or timestamp",
           Kind::kUnmendable);
    }
  }

  void walkObjectClass(const DtlObjPtr& form, const std::string& parent) {
    const long line = lineOf(form, 0);
    const char* name = atomText(element(form, 1));
    if (!name) {
      note(line, "a class needs a name: (class NAME ...)", Kind::kUnmendable);
      return;
    }
    const std::string full = fullName(parent, name);
    check_.declared.addObjectClass(full.c_str(), parent.empty() ? nullptr : parent.c_str());
    for (DtlObjPtr rest = DtcCdr(DtcCdr(form)); isList(rest); rest = DtcCdr(rest)) {
      DtlObjPtr entry = DtcCar(rest);
      const long at = lineOf(entry, line);
      if (isList(entry) && keyword(entry, "attribute", at)) {
        walkAttribute(entry, at, full);
      } else if (isList(entry) && keyword(entry, "class", at)) {
        walkObjectClass(entry, full);
      } else {
        strayEntry(entry, at, full, "attribute");
      }
    }
  }

  void walkAttribute(const DtlObjPtr& form, long line, const std::string& className) {
    const int count = length(form);
    const char* name = atomText(element(form, 1));
    if (count != 4 && count != 5) {
      note(line,
           "attribute " + quoted(name) + " of " + quoted(className.c_str()) + " has " +
               std::to_string(count - 1) +
               " elements after the keyword: a name, a transport, an order and an optional space",
           Kind::kUnmendable);
      return;
    }
    if (!name) {
      note(line, "an attribute needs a name: (attribute NAME TRANSPORT ORDER)", Kind::kUnmendable);
      return;
    }
    DtTransportType transport;
    DtOrderType order;
    transportAndOrder(form, line, "attribute " + quoted(name), transport, order);
    const char* space = count == 5 ? atomText(element(form, 4)) : nullptr;
    if (count == 5 && !space) {
      note(line, "the space of attribute " + quoted(name) + " must be a name", Kind::kUnmendable);
    }
    check_.declared.addSpaceAttribute(className.c_str(), name, transport, order, space);
  }

  void walkInteractionClass(const DtlObjPtr& form, const std::string& parent) {
    const long line = lineOf(form, 0);
    const char* name = atomText(element(form, 1));
    if (length(form) < 4 || !name) {
      note(line,
           "an interaction class is (class NAME TRANSPORT ORDER [SPACE] ...): " +
               (name ? "class " + quoted(name) + " has no transport or order"
                     : std::string("this one has no name")),
           Kind::kUnmendable);
      return;
    }
    const std::string full = fullName(parent, name);
    DtTransportType transport;
    DtOrderType order;
    transportAndOrder(form, line, "interaction class " + quoted(full.c_str()), transport, order);
    DtlObjPtr rest = DtFed13Form::tail(form, 4);
    const char* space = nullptr;
    DtlObjPtr next = head(rest);
    if (!next.isNull() && !DtcNull(next) && !DtcListp(next)) {
      space = atomText(next);
      if (!space) {
        note(line, "the space of interaction class " + quoted(full.c_str()) + " must be a name",
             Kind::kUnmendable);
      }
      rest = DtcCdr(rest);
    }
    check_.declared.addInteractionClass(full.c_str(), parent.empty() ? nullptr : parent.c_str(),
                                        transport, order, space);
    for (; isList(rest); rest = DtcCdr(rest)) {
      DtlObjPtr entry = DtcCar(rest);
      const long at = lineOf(entry, line);
      if (isList(entry) && keyword(entry, "parameter", at)) {
        const char* parameter = atomText(element(entry, 1));
        if (length(entry) != 2 || !parameter) {
          note(at, "a parameter is (parameter NAME): one name, nothing more", Kind::kUnmendable);
          continue;
        }
        check_.declared.addParameter(full.c_str(), parameter);
      } else if (isList(entry) && keyword(entry, "class", at)) {
        walkInteractionClass(entry, full);
      } else {
        strayEntry(entry, at, full, "parameter");
      }
    }
  }

  FedCheck& check_;
  const std::string& text_;
  const std::unordered_map<const DtlObj*, Span>& spans_;
  std::vector<size_t> newlines_;  // offsets of the text's newlines, then npos
};

// The text of a halt of the reader, without its prefix.
std::string haltText(const DtException& e) {
  std::string text = e.initialException()->message();
  const std::string prefix = "KTL Error: ";
  size_t at = text.find(prefix);
  return at == std::string::npos ? text : text.substr(at + prefix.size());
}

// Reads the text that a string holds as the reader does: from a file, into a model.
int readText(const std::string& text, ModelRecorder& model, std::string& error) {
  std::unique_ptr<FILE, int (*)(FILE*)> file(
      fmemopen(const_cast<char*>(text.data()), text.size() ? text.size() : 1, "r"), std::fclose);
  if (!file) return DtFedNoFile;
  DtFedReader13 reader;
  int result = reader.readFedFilePtr(file.get(), &model, DtFilename("mended.fed"), 0, false, false);
  error = reader.lastError().c_str();
  return result;
}

}  // namespace

const FedDeviation* FedCheck::firstUnmendable() const {
  for (const FedDeviation& deviation : deviations) {
    if (deviation.kind == Kind::kUnmendable) return &deviation;
  }
  return nullptr;
}

bool FedCheck::refused() const {
  for (const FedDeviation& deviation : deviations) {
    if (deviation.kind != Kind::kWarned) return true;
  }
  return false;
}

void checkFed(const std::string& file, FedCheck& check) {
  std::unique_ptr<FILE, int (*)(FILE*)> in(std::fopen(file.c_str(), "rb"), std::fclose);
  if (!in) return;
  char block[65536];
  for (size_t count; (count = std::fread(block, 1, sizeof block, in.get())) > 0;) {
    check.text.append(block, count);
  }
  if (std::ferror(in.get())) return;
  check.opened = true;

  // The reader reads the text as far as its first NUL.
  PlacedStream stream(check.text.c_str());
  SpanListener listener;
  DtKtlEnvironment environment;
  DtlObjPtr eof = DtcIntern("eof", environment.env());
  DtlObjPtr form;
  try {
    form = DtcRead(&stream, environment.env(), &listener);
  } catch (const DtException& e) {
    const std::string halt = haltText(e);
    const long innermost = listener.open.empty() ? stream.lineCount() : listener.open.back().line;
    const std::string lists = std::to_string(listener.open.size());
    if (halt.find("Missing") == 0) {
      check.deviations.push_back({innermost,
                                  "the list that opens here is not closed: the text ends inside " +
                                      lists +
                                      " lists (a \")\" is missing, or a \"(\" is one too many)",
                                  Kind::kUnmendable});
    } else if (halt.find("EOF while reading string") == 0) {
      check.deviations.push_back(
          {innermost, "a string in the list that opens here is not closed by a double quote",
           Kind::kUnmendable});
    } else {
      check.deviations.push_back(
          {stream.lineCount(), "the text does not read: " + halt, Kind::kUnmendable});
    }
    return;
  }
  if (DtcEq(form, eof)) {
    check.deviations.push_back(
        {1, "the file holds no list: a FED file is one list, (FED ...)", Kind::kUnmendable});
    return;
  }
  Checker(check, listener).walkFed(form);
  // The reader stops after the first form; whatever follows is not read.
  const long after = stream.lineCount();
  try {
    DtlObjPtr next = DtcRead(&stream, environment.env());
    if (!DtcEq(next, eof)) {
      check.deviations.push_back(
          {after,
           "the FED list ends on this line and the text after it is not read (a \")\" too many "
           "before it?)",
           Kind::kWarned});
    }
  } catch (const DtException&) {
    check.deviations.push_back(
        {after,
         "the FED list ends on this line and the text after it does not read (a \")\" too many "
         "before it?)",
         Kind::kWarned});
  }
  std::stable_sort(check.deviations.begin(), check.deviations.end(),
                   [](const FedDeviation& a, const FedDeviation& b) { return a.line < b.line; });
}

bool mendFed(const FedCheck& check, std::string& mended, FedDeviation& stop) {
  if (!check.opened) {
    stop = {0, "the file cannot be read", Kind::kUnmendable};
    return false;
  }
  if (const FedDeviation* first = check.firstUnmendable()) {
    stop = *first;
    return false;
  }
  stop = {1, "the mended text does not read as the file declares", Kind::kUnmendable};
  std::vector<FedEdit> edits = check.edits;
  std::sort(edits.begin(), edits.end(),
            [](const FedEdit& a, const FedEdit& b) { return a.begin < b.begin; });
  mended.clear();
  size_t at = 0;
  for (const FedEdit& edit : edits) {
    // Edits never overlap: each touches its own keyword, list or run of words.
    if (edit.begin < at || edit.end < edit.begin || edit.end > check.text.size()) return false;
    mended.append(check.text, at, edit.begin - at);
    mended += edit.replacement;
    at = edit.end;
  }
  mended.append(check.text, at, std::string::npos);
  // The mended text must read, and deliver what the file declares.
  ModelRecorder read;
  std::string error;
  const int level = DtNotifyLevel;
  DtNotifyLevel = 0;  // the warnings of what is kept as written were told already
  const int result = readText(mended, read, error);
  DtNotifyLevel = level;
  if (result != DtFedOk) return false;
  return modelJson("", KORRti::DtFomType13, read) ==
         modelJson("", KORRti::DtFomType13, check.declared);
}

}  // namespace fomdump
