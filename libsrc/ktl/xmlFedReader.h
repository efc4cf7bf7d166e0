#ifndef KTL_XMLFEDREADER_H
#define KTL_XMLFEDREADER_H

#include <memory>
#include <set>

#include <ktl/fedReader.h>
#include <util/dtString.h>

// libxml2's node and character types, declared as libxml2 declares them, so that a host
// includes this header without libxml2's include path.
struct _xmlNode;
typedef struct _xmlNode xmlNode;
typedef unsigned char xmlChar;

namespace KORRti {

// Plain records of what an XML object model document declares. A reader allocates one per
// element and either hands it to the target's add... operation, which then owns it, or
// deletes it when the target's has... operation knows it already.

struct DtTimeType {
  DtString name;
  DtString dataType;
  DtString semantics;
};

struct DtUserSuppliedTagsType {
  DtString name;
  DtString dataType;
  DtString semantics;
};

struct DtSynchronizationPointsType {
  DtString label;
  DtString dataType;
  // 0 not given, 1 Register, 2 Achieve, 3 RegisterAchieve, 4 NoSynch, 5 NA.
  int32_t capability = 0;
  DtString semantics;
};

struct DtTransportationType {
  DtString name;
  DtString description;  // always the same text as semantics
  bool reliable = false;
  DtString semantics;
};

struct DtBasicDataRepresentationType {
  DtString name;
  unsigned long size = 0;
  DtString interpretation;
  int32_t endian = 0;  // 0 not given, 1 Big, 2 Little
  DtString encoding;
};

struct DtSimpleDatatypeType {
  DtString name;
  DtString representation;
  DtString units;
  DtString resolution;
  DtString accuracy;
  DtString semantics;
};

struct DtEnumeratorType {
  DtString name;
  DtString values;
};

struct DtEnumeratedDatatypeType {
  DtString name;
  DtString representation;
  std::set<std::shared_ptr<DtEnumeratorType>> enumerators;
  DtString semantics;
};

struct DtArrayDatatypeType {
  DtString name;
  DtString dataType;
  DtString cardinality;
  DtString encoding;
  DtString semantics;
};

struct DtFieldType {
  DtString name;
  DtString dataType;
  DtString semantics;
};

struct DtFixedRecordDatatypeType {
  DtString name;
  DtString encoding;
  DtString semantics;
  std::set<std::shared_ptr<DtFieldType>> fields;
};

struct DtAlternativeType {
  DtString enumerator;
  DtString name;
  DtString dataType;
  DtString semantics;
};

struct DtVariantRecordDatatypeType {
  DtString name;
  DtString discriminant;
  DtString dataType;
  std::set<std::shared_ptr<DtAlternativeType>> alternatives;
  DtString encoding;
  DtString semantics;
};

struct DtNotesType {
  DtString label;
  DtString semantics;
};

struct DtUpdateRateType {
  DtString name;
  float rate = 0.0f;
  DtString semantics;
};

// Base of the XML readers. For now it holds the content test that format detection uses.
class DtXmlFedReader : public DtFedReader {
 public:
  // The format of an open XML file, told by its root element; 0 if not recognised or
  // unreadable. The file is left open and rewound.
  static DtFomType fomType(void* file);
  // The format told by a root element: 3 or 4 by the namespace, 2 by the attributes of the
  // root or of its first transportation, else 0.
  static DtFomType fomType(xmlNode* root);
  // The first child of node with this name, of whatever node type; null if none.
  static xmlNode* getNodeByName(xmlNode* node, const xmlChar* name);
};

}  // namespace KORRti

#endif
