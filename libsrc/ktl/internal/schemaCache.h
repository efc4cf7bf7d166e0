#ifndef KTL_INTERNAL_SCHEMACACHE_H
#define KTL_INTERNAL_SCHEMACACHE_H

// The compiled XML Schema of the last schema file a document was validated against, kept so
// that the modules of one federation, which name the same schema, compile it once.
//
// A compiled schema points into libxml2's global state (the built-in XML Schema types among
// it), which xmlCleanupParser frees: whoever calls xmlCleanupParser releases the cache first,
// with releaseParserState(), or the next validation would run on freed types.
#include <libxml/tree.h>

namespace KORRti {
namespace detail {

// Validates doc against the schema in file, compiling the schema unless the one held came from
// the same file (same identity, size and modification time; a schema that the file includes or
// imports is not watched). False if the schema can't be compiled or doc is not valid. Calls are
// serialized: a schema is never replaced under a validation that uses it.
bool validateWithCachedSchema(xmlDoc* doc, const char* file);

// Frees the compiled schema, then libxml2's global state (xmlCleanupParser). The next validation
// compiles its schema again.
void releaseParserState();

}  // namespace detail
}  // namespace KORRti

#endif
