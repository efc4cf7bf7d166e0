#include <ktl/internal/schemaCache.h>

#include <sys/stat.h>

#include <mutex>
#include <string>

#include <libxml/parser.h>
#include <libxml/xmlschemas.h>

#include <ktl/envXmlReader.h>

namespace KORRti {
namespace detail {

namespace {

// One compiled schema and the identity of the file it came from. Every member is guarded by
// the lock.
class SchemaCache {
 public:
  static SchemaCache& instance() {
    static SchemaCache cache;
    return cache;
  }

  bool validate(xmlDoc* doc, const char* file) {
    std::lock_guard<std::mutex> hold(lock_);
    struct stat info;
    if (::stat(file, &info) != 0) return false;
    if (!schema_ || path_ != file || !sameFile(info)) {
      schema_.reset();
      XmlPtr<xmlSchemaParserCtxt> parser(xmlSchemaNewParserCtxt(file));
      if (!parser) return false;
      schema_.reset(xmlSchemaParse(parser.get()));
      if (!schema_) return false;
      path_ = file;
      identity_ = info;
    }
    XmlPtr<xmlSchemaValidCtxt> validation(xmlSchemaNewValidCtxt(schema_.get()));
    if (!validation) return false;
    return xmlSchemaValidateDoc(validation.get(), doc) == 0;
  }

  void releaseParserState() {
    std::lock_guard<std::mutex> hold(lock_);
    schema_.reset();
    path_.clear();
    xmlCleanupParser();
  }

 private:
  SchemaCache() = default;
  bool sameFile(const struct stat& info) const {
    return info.st_dev == identity_.st_dev && info.st_ino == identity_.st_ino &&
           info.st_size == identity_.st_size && info.st_mtim.tv_sec == identity_.st_mtim.tv_sec &&
           info.st_mtim.tv_nsec == identity_.st_mtim.tv_nsec;
  }

  std::mutex lock_;
  XmlPtr<xmlSchema> schema_;
  std::string path_;
  struct stat identity_ = {};
};

}  // namespace

bool validateWithCachedSchema(xmlDoc* doc, const char* file) {
  return SchemaCache::instance().validate(doc, file);
}

void releaseParserState() {
  SchemaCache::instance().releaseParserState();
}

}  // namespace detail
}  // namespace KORRti
