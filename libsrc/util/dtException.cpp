#include <util/dtException.h>

#include <ostream>

#include <util/dtFilename.h>

namespace KORRti {

namespace {

std::string textOrEmpty(const char* text) {
  return text ? text : "";
}

}  // namespace

DtException::DtException(const char* message, const char* function, const char* file,
                         unsigned int line, const DtException* previous)
    : message_(textOrEmpty(message)),
      function_(textOrEmpty(function)),
      file_(textOrEmpty(file)),
      line_(line),
      where_(function_ + " (" + file_ + ":" + std::to_string(line_) + ")"),
      previous_(previous ? std::make_shared<DtException>(*previous) : nullptr) {}

DtException::DtException(const DtException& other) = default;
DtException& DtException::operator=(const DtException& other) = default;

DtException::~DtException() {
  // Unlink the chain one cause at a time, so that a long chain is not freed by recursion.
  std::shared_ptr<DtException> next = std::move(previous_);
  while (next && next.use_count() == 1) {
    std::shared_ptr<DtException> after = std::move(next->previous_);
    next = std::move(after);
  }
}

const DtException* DtException::lastException() const {
  return this;
}

const DtException* DtException::initialException() const {
  const DtException* link = this;
  while (link->previous_) link = link->previous_.get();
  return link;
}

const char* DtException::message() const {
  return message_.c_str();
}
const char* DtException::what() const {
  return message_.c_str();
}
const char* DtException::where() const {
  return where_.c_str();
}

std::ostream& operator<<(std::ostream& out, const DtException& exception) {
  out << exception.message() << " [" << exception.where() << "]";
  for (const DtException* cause = exception.previous(); cause; cause = cause->previous()) {
    out << "\n  caused by: " << cause->message() << " [" << cause->where() << "]";
  }
  return out;
}

std::string DtSourceName(const char* file) {
  DtFilename name = DtFilename::stripPath(DtFilename(file));
  name.snipBack('.', false);
  return name.stdString();
}

}  // namespace KORRti
