// Every IEEE 1516-2010 and 1516-2025 document of the test corpus (tests/data/fom/ieee1516-2010
// and ieee1516-2025, public files kept as found) read as a host reads it: the format told by
// DtFedReader::checkFomType, the reader made by DtFedReaderFactory. For each file, the format,
// the result and the last text, with the reason where the file is not a complete module. For
// every file read whole, the classes, members, data types, dimensions, transportations, notes
// and update rates delivered are checked against a count of the document's elements made with
// XPath, apart from the reader's walk; the large ones (the merged RPR FOM, NETN merged with RPR,
// the two standard MIMs) are named. Schema validation runs against the corpus's own schemas.
#include <gtest/gtest.h>

#include <cstdio>
#include <filesystem>
#include <memory>
#include <string>
#include <vector>

#include <libxml/parser.h>
#include <libxml/tree.h>
#include <libxml/xmlschemas.h>
#include <libxml/xpath.h>

#include <ktl/fedReader.h>
#include <ktl/fedReader1516_4.h>
#include <ktl/fedReader1516e.h>
#include <ktl/fedReaderFactory.h>
#include <util/notify.h>

#include "support/capture.h"
#include "support/counting_target.h"
#include "support/files.h"

using namespace KORRti;
using ktltest::CountingTarget;
using ktltest::Counts;

namespace {

const std::string theData = std::string(KTL_TEST_DATA_DIR) + "/fom";

// The number of nodes an XPath expression selects in doc.
int countNodes(xmlDoc* doc, const char* expression) {
  std::unique_ptr<xmlXPathContext, void (*)(xmlXPathContext*)> context(xmlXPathNewContext(doc),
                                                                       xmlXPathFreeContext);
  std::unique_ptr<xmlXPathObject, void (*)(xmlXPathObject*)> found(
      xmlXPathEvalExpression(BAD_CAST expression, context.get()), xmlXPathFreeObject);
  if (!found || !found->nodesetval) return 0;
  return found->nodesetval->nodeNr;
}

// The elements of an object model document, counted by XPath whatever its namespace.
#define E(name) "*[local-name()='" name "']"
Counts scan(const std::string& text) {
  std::unique_ptr<xmlDoc, void (*)(xmlDoc*)> doc(
      xmlReadMemory(text.data(), static_cast<int>(text.size()), nullptr, nullptr, 0), xmlFreeDoc);
  Counts c;
  if (!doc) return c;
  xmlDoc* d = doc.get();
  c.objectClasses = countNodes(d, "/" E("objectModel") "/" E("objects") "//" E("objectClass"));
  c.attributes = countNodes(d, "//" E("objectClass") "/" E("attribute"));
  c.interactionClasses =
      countNodes(d, "/" E("objectModel") "/" E("interactions") "//" E("interactionClass"));
  c.parameters = countNodes(d, "//" E("interactionClass") "/" E("parameter"));
  c.basic = countNodes(d, "//" E("basicDataRepresentations") "/" E("basicData"));
  c.simple = countNodes(d, "//" E("simpleDataTypes") "/" E("simpleData"));
  c.enumerated = countNodes(d, "//" E("enumeratedDataTypes") "/" E("enumeratedData"));
  c.enumerators = countNodes(d, "//" E("enumeratedData") "/" E("enumerator"));
  c.array = countNodes(d, "//" E("arrayDataTypes") "/" E("arrayData"));
  c.fixedRecord = countNodes(d, "//" E("fixedRecordDataTypes") "/" E("fixedRecordData"));
  c.fields = countNodes(d, "//" E("fixedRecordData") "/" E("field"));
  c.variantRecord = countNodes(d, "//" E("variantRecordDataTypes") "/" E("variantRecordData"));
  c.alternatives = countNodes(d, "//" E("variantRecordData") "/" E("alternative"));
  c.notes = countNodes(d, "/" E("objectModel") "/" E("notes") "/" E("note"));
  c.dimensions = countNodes(d, "/" E("objectModel") "/" E("dimensions") "/" E("dimension"));
  c.transportations =
      countNodes(d, "/" E("objectModel") "/" E("transportations") "/" E("transportation"));
  c.updateRates = countNodes(d, "/" E("objectModel") "/" E("updateRates") "/" E("updateRate"));
  return c;
}
#undef E

struct Read {
  DtFomType type = DtFomTypeUnknown;
  int result = -1;
  std::string error;
  Counts counts;
};

// Reads the file as a host does: its format told, the factory's reader, no strict checking
// unless asked.
Read readModule(const std::string& path, unsigned int strict = 0, bool validate = false) {
  Read read;
  CountingTarget target;
  ktltest::captureOutput([&] {
    read.type = DtFedReader::checkFomType(path.c_str());
    std::unique_ptr<DtFedReader> reader(DtFedReaderFactory().makeFedReader(read.type));
    if (validate) {
      if (auto* later = dynamic_cast<DtFedReader1516e*>(reader.get())) {
        later->setSchemaValidationEnabled(true);
      }
    }
    read.result = reader->readFed(path.c_str(), &target, strict, validate, false);
    read.error = reader->lastError().c_str();
  });
  read.counts = target.counts;
  return read;
}

// Why a file gives what it gives.
const char kComplete[] = "a complete module";
const char kUsesMimTransportations[] =
    "uses the standard MIM's transportations and declares none of its own, which only warns";
const char kNoDataTypes[] = "declares no data types of its own, which only warns";
const char kSom[] =
    "a simulation object model: its serviceUtilization section is not read, which only warns";
const char kNoInteractions[] = "a module with no interactions section, which only warns";
const char kNoDimensions[] = "a module with no dimensions section, which only warns";
const char kNoObjects[] = "a module with no objects section, which only warns";
const char kNotResolved[] =
    "wrong only to a reader that resolves the types it names: this one copies the text and "
    "leaves that to the target";
const char kNoNamespaceObjectRoot[] =
    "no namespace, so read as 1516-2025; its first object class is not HLAobjectRoot (named "
    "otherwise, or named in an attribute)";
const char kNoNamespaceInteractionRoot[] =
    "no namespace, so read as 1516-2025; it has no object classes and its first interaction "
    "class is not HLAinteractionRoot";

struct Expected {
  const char* file;  // under tests/data/fom
  int type;          // what checkFomType tells
  int result;
  const char* error;  // lastError() after the read
  const char* why;
};

const Expected theExpected[] = {
    {"ieee1516-2010/ivct-helloworld/BasicSimpleTypes.xml", 3, 0, "", kComplete},
    {"ieee1516-2010/ivct-helloworld/HelloWorld.xml", 3, 0, "", kComplete},
    {"ieee1516-2010/ivct-helloworld/HelloWorldSOM.xml", 3, 0,
     "Unrecognized top-level tag: serviceUtilization", kSom},
    {"ieee1516-2010/misc/hla-pathbuilder_RestaurantFOMmodule.xml", 3, 0, "", kComplete},
    {"ieee1516-2010/misc/hla-pathbuilder_SolarSystemModule.xml", 3, 0, "", kComplete},
    {"ieee1516-2010/misc/icemagno_FuelEconomyBase.xml", 3, 0,
     "Missing or invalid transportations table", kUsesMimTransportations},
    {"ieee1516-2010/misc/icemagno_SushiRestaurant.xml", 3, 0,
     "Missing or invalid transportations table", kUsesMimTransportations},
    {"ieee1516-2010/misc/icemagno_federation.xml", 3, 0, "", kComplete},
    {"ieee1516-2010/netn-fom-v3.0/NETN-AIS.xml", 3, 0, "Missing or invalid transportations table",
     kUsesMimTransportations},
    {"ieee1516-2010/netn-fom-v3.0/NETN-BASE.xml", 3, 0, "Missing or invalid transportations table",
     kUsesMimTransportations},
    {"ieee1516-2010/netn-fom-v3.0/NETN-CBRN.xml", 3, 0, "Missing or invalid transportations table",
     kUsesMimTransportations},
    {"ieee1516-2010/netn-fom-v3.0/NETN-COM.xml", 3, 0, "Missing or invalid interactions table",
     kNoInteractions},
    {"ieee1516-2010/netn-fom-v3.0/NETN-ETR.xml", 3, 0, "Missing or invalid transportations table",
     kUsesMimTransportations},
    {"ieee1516-2010/netn-fom-v3.0/NETN-LOG.xml", 3, 0, "Missing or invalid transportations table",
     kUsesMimTransportations},
    {"ieee1516-2010/netn-fom-v3.0/NETN-METOC.xml", 3, 0, "Missing or invalid transportations table",
     kUsesMimTransportations},
    {"ieee1516-2010/netn-fom-v3.0/NETN-MRM.xml", 3, 0, "", kComplete},
    {"ieee1516-2010/netn-fom-v3.0/NETN-ORG.xml", 3, 0, "Missing or invalid transportations table",
     kUsesMimTransportations},
    {"ieee1516-2010/netn-fom-v3.0/NETN-Physical.xml", 3, 0,
     "Missing or invalid transportations table", kUsesMimTransportations},
    {"ieee1516-2010/netn-fom-v3.0/NETN-SE.xml", 3, 0, "Missing or invalid transportations table",
     kUsesMimTransportations},
    {"ieee1516-2010/netn-fom-v3.0/NETN-TMR.xml", 3, 0, "Missing or invalid transportations table",
     kUsesMimTransportations},
    {"ieee1516-2010/netn-merged/NETN-Merged-With-RPR.xml", 3, 0, "", kComplete},
    {"ieee1516-2010/nonstandard-no-namespace/certi_BillardTest2010.xml", 4, 2,
     "Object class root is not HLAobjectRoot in FDD file.", kNoNamespaceObjectRoot},
    {"ieee1516-2010/nonstandard-no-namespace/certi_ModernBillard_Base.xml", 2, 0,
     "Missing or invalid Time",
     "attribute style with DTDversion: read by the 1516-2000 reader; it has no time section"},
    {"ieee1516-2010/nonstandard-no-namespace/certi_ModernBillard_Create.xml", 4, 2,
     "Object class root is not HLAobjectRoot in FDD file.", kNoNamespaceObjectRoot},
    {"ieee1516-2010/nonstandard-no-namespace/certi_ModernBillard_Join.xml", 4, 2,
     "Interaction class with no root found in FDD file.", kNoNamespaceInteractionRoot},
    {"ieee1516-2010/nonstandard-no-namespace/certi_T2010.xml", 4, 0,
     "Unexpected tag in times list for FDD file.\n\tTime Tag = lookahead * at XML Node lookahead "
     "near line 506",
     "no namespace: read as 1516-2025, where the 2010 time element names are wrong children"},
    {"ieee1516-2010/nonstandard-no-namespace/certi_T2010Small.xml", 4, 0,
     "Missing or invalid Data Types", kNoDataTypes},
    {"ieee1516-2010/nonstandard-no-namespace/certi_T2010VerySmallO.xml", 4, 0,
     "Missing or invalid Data Types", kNoDataTypes},
    {"ieee1516-2010/nonstandard-no-namespace/certi_T2010VerySmallOI.xml", 4, 0,
     "Missing or invalid Data Types", kNoDataTypes},
    {"ieee1516-2010/nonstandard-no-namespace/jcerti_Create1516e.xml", 4, 2,
     "Object class root is not HLAobjectRoot in FDD file.", kNoNamespaceObjectRoot},
    {"ieee1516-2010/nonstandard-no-namespace/jcerti_Join1516e.xml", 4, 2,
     "Interaction class with no root found in FDD file.", kNoNamespaceInteractionRoot},
    {"ieee1516-2010/nonstandard-no-namespace/jcerti_array.xml", 4, 2,
     "Object class root is not HLAobjectRoot in FDD file.", kNoNamespaceObjectRoot},
    {"ieee1516-2010/nonstandard-no-namespace/jcerti_uavScalian.xml", 4, 2,
     "Object class root is not HLAobjectRoot in FDD file.", kNoNamespaceObjectRoot},
    {"ieee1516-2010/openrti-modules/Dimension1-1.xml", 3, 0, "Missing or invalid Data Types",
     kNoDataTypes},
    {"ieee1516-2010/openrti-modules/Dimension1-2.xml", 3, 0, "Missing or invalid Data Types",
     kNoDataTypes},
    {"ieee1516-2010/openrti-modules/Dimension2-1.xml", 3, 0, "Missing or invalid Data Types",
     kNoDataTypes},
    {"ieee1516-2010/openrti-modules/Dimension2-2.xml", 3, 0, "Missing or invalid Data Types",
     kNoDataTypes},
    {"ieee1516-2010/openrti-modules/InteractionClass1-1.xml", 3, 0, "Missing or invalid Data Types",
     kNoDataTypes},
    {"ieee1516-2010/openrti-modules/InteractionClass1-2.xml", 3, 0, "Missing or invalid Data Types",
     kNoDataTypes},
    {"ieee1516-2010/openrti-modules/InteractionClass1.xml", 3, 0, "Missing or invalid Data Types",
     kNoDataTypes},
    {"ieee1516-2010/openrti-modules/InteractionClass2-1.xml", 3, 0, "Missing or invalid Data Types",
     kNoDataTypes},
    {"ieee1516-2010/openrti-modules/InteractionClass2-2.xml", 3, 0, "Missing or invalid Data Types",
     kNoDataTypes},
    {"ieee1516-2010/openrti-modules/InteractionClass2.xml", 3, 0, "Missing or invalid Data Types",
     kNoDataTypes},
    {"ieee1516-2010/openrti-modules/InteractionClass3-1.xml", 3, 0, "Missing or invalid Data Types",
     kNoDataTypes},
    {"ieee1516-2010/openrti-modules/InteractionClass3-2.xml", 3, 0, "Missing or invalid Data Types",
     kNoDataTypes},
    {"ieee1516-2010/openrti-modules/InteractionClass3.xml", 3, 0, "Missing or invalid Data Types",
     kNoDataTypes},
    {"ieee1516-2010/openrti-modules/ObjectClass1-1.xml", 3, 0, "Missing or invalid Data Types",
     kNoDataTypes},
    {"ieee1516-2010/openrti-modules/ObjectClass1-2.xml", 3, 0, "Missing or invalid Data Types",
     kNoDataTypes},
    {"ieee1516-2010/openrti-modules/ObjectClass1.xml", 3, 0, "Missing or invalid Data Types",
     kNoDataTypes},
    {"ieee1516-2010/openrti-modules/ObjectClass2-1.xml", 3, 0, "Missing or invalid Data Types",
     kNoDataTypes},
    {"ieee1516-2010/openrti-modules/ObjectClass2-2.xml", 3, 0, "Missing or invalid Data Types",
     kNoDataTypes},
    {"ieee1516-2010/openrti-modules/ObjectClass2.xml", 3, 0, "Missing or invalid Data Types",
     kNoDataTypes},
    {"ieee1516-2010/openrti-modules/ObjectClass3-1.xml", 3, 0, "Missing or invalid Data Types",
     kNoDataTypes},
    {"ieee1516-2010/openrti-modules/ObjectClass3-2.xml", 3, 0, "Missing or invalid Data Types",
     kNoDataTypes},
    {"ieee1516-2010/openrti-modules/ObjectClass3.xml", 3, 0, "Missing or invalid Data Types",
     kNoDataTypes},
    {"ieee1516-2010/openrti-modules/UpdateRate1-1.xml", 3, 0, "Missing or invalid Data Types",
     kNoDataTypes},
    {"ieee1516-2010/openrti-modules/UpdateRate1-2.xml", 3, 0, "Missing or invalid Data Types",
     kNoDataTypes},
    {"ieee1516-2010/openrti-modules/UpdateRate2-1.xml", 3, 0, "Missing or invalid Data Types",
     kNoDataTypes},
    {"ieee1516-2010/openrti-modules/UpdateRate2-2.xml", 3, 0, "Missing or invalid Data Types",
     kNoDataTypes},
    {"ieee1516-2010/openrti-modules/openrti_fddget_fdd-1.xml", 3, 0,
     "Missing or invalid Data Types", kNoDataTypes},
    {"ieee1516-2010/openrti-modules/openrti_fddget_fdd-2.xml", 3, 2,
     "Object class root is not HLAobjectRoot in FDD file.",
     "its first object class is not the root"},
    {"ieee1516-2010/portico-restaurant/RestaurantDrinks.xml", 3, 0,
     "Missing or invalid transportations table", kUsesMimTransportations},
    {"ieee1516-2010/portico-restaurant/RestaurantFood.xml", 3, 0,
     "Missing or invalid transportations table", kUsesMimTransportations},
    {"ieee1516-2010/portico-restaurant/RestaurantProcesses.xml", 3, 0, "", kComplete},
    {"ieee1516-2010/portico-restaurant/RestaurantSoup.xml", 3, 0, "Missing or invalid Data Types",
     kNoDataTypes},
    {"ieee1516-2010/portico-tests/NonEquivalentMIM-Interactions.xml", 3, 0,
     "Missing or invalid dimensions table", kNoDimensions},
    {"ieee1516-2010/portico-tests/NonEquivalentMIM-Objects.xml", 3, 0,
     "Missing or invalid dimensions table", kNoDimensions},
    {"ieee1516-2010/portico-tests/UASmodule.xml", 3, 0, "Missing or invalid transportations table",
     kUsesMimTransportations},
    {"ieee1516-2010/portico-tests/datatypes.xml", 3, 0, "", kComplete},
    {"ieee1516-2010/portico-tests/largeAttributeCount.xml", 3, 0, "Missing or invalid Data Types",
     kNoDataTypes},
    {"ieee1516-2010/portico-tests/negative/datatypes/arrayCardinalityEmpty.xml", 3, 0, "",
     kNotResolved},
    {"ieee1516-2010/portico-tests/negative/datatypes/arrayCardinalityMissing.xml", 3, 0, "",
     kNotResolved},
    {"ieee1516-2010/portico-tests/negative/datatypes/arrayCardinalityNegative.xml", 3, 0, "",
     kNotResolved},
    {"ieee1516-2010/portico-tests/negative/datatypes/arrayCardinalityNonNumeric.xml", 3, 0, "",
     kNotResolved},
    {"ieee1516-2010/portico-tests/negative/datatypes/arrayDatatypeDoesntExist.xml", 3, 0, "",
     kNotResolved},
    {"ieee1516-2010/portico-tests/negative/datatypes/arrayDatatypeEmpty.xml", 3, 0, "",
     kNotResolved},
    {"ieee1516-2010/portico-tests/negative/datatypes/arrayDatatypeMissing.xml", 3, 0, "",
     kNotResolved},
    {"ieee1516-2010/portico-tests/negative/datatypes/arrayNameEmpty.xml", 3, 0, "", kNotResolved},
    {"ieee1516-2010/portico-tests/negative/datatypes/arrayNameMissing.xml", 3, 0, "", kNotResolved},
    {"ieee1516-2010/portico-tests/negative/datatypes/basicNameEmpty.xml", 3, 0, "", kNotResolved},
    {"ieee1516-2010/portico-tests/negative/datatypes/basicNameMissing.xml", 3, 0, "", kNotResolved},
    {"ieee1516-2010/portico-tests/negative/datatypes/basicSizeEmpty.xml", 3, 0, "", kNotResolved},
    {"ieee1516-2010/portico-tests/negative/datatypes/basicSizeMissing.xml", 3, 0, "", kNotResolved},
    {"ieee1516-2010/portico-tests/negative/datatypes/basicSizeNegative.xml", 3, 0, "",
     kNotResolved},
    {"ieee1516-2010/portico-tests/negative/datatypes/basicSizeNonNumeric.xml", 3, 0, "",
     kNotResolved},
    {"ieee1516-2010/portico-tests/negative/datatypes/enumeratedEnumeratorNameEmpty.xml", 3, 0, "",
     kNotResolved},
    {"ieee1516-2010/portico-tests/negative/datatypes/enumeratedEnumeratorNameMissing.xml", 3, 0, "",
     kNotResolved},
    {"ieee1516-2010/portico-tests/negative/datatypes/enumeratedEnumeratorValueEmpty.xml", 3, 0, "",
     kNotResolved},
    {"ieee1516-2010/portico-tests/negative/datatypes/enumeratedEnumeratorValueMissing.xml", 3, 0,
     "", kNotResolved},
    {"ieee1516-2010/portico-tests/negative/datatypes/enumeratedEnumeratorValueNonNumeric.xml", 3, 0,
     "", kNotResolved},
    {"ieee1516-2010/portico-tests/negative/datatypes/enumeratedNameEmpty.xml", 3, 0, "",
     kNotResolved},
    {"ieee1516-2010/portico-tests/negative/datatypes/enumeratedNameMissing.xml", 3, 0, "",
     kNotResolved},
    {"ieee1516-2010/portico-tests/negative/datatypes/enumeratedNoEnumerators.xml", 3, 0, "",
     kNotResolved},
    {"ieee1516-2010/portico-tests/negative/datatypes/enumeratedRepresentationDoesntExist.xml", 3, 0,
     "", kNotResolved},
    {"ieee1516-2010/portico-tests/negative/datatypes/enumeratedRepresentationEmpty.xml", 3, 0, "",
     kNotResolved},
    {"ieee1516-2010/portico-tests/negative/datatypes/enumeratedRepresentationMissing.xml", 3, 0, "",
     kNotResolved},
    {"ieee1516-2010/portico-tests/negative/datatypes/enumeratedRepresentationNotABasicType.xml", 3,
     0, "", kNotResolved},
    {"ieee1516-2010/portico-tests/negative/datatypes/fixedRecordFieldDatatypeDoesntExist.xml", 3, 0,
     "", kNotResolved},
    {"ieee1516-2010/portico-tests/negative/datatypes/fixedRecordFieldDatatypeEmpty.xml", 3, 0, "",
     kNotResolved},
    {"ieee1516-2010/portico-tests/negative/datatypes/fixedRecordFieldDatatypeMissing.xml", 3, 0, "",
     kNotResolved},
    {"ieee1516-2010/portico-tests/negative/datatypes/fixedRecordFieldNameEmpty.xml", 3, 0, "",
     kNotResolved},
    {"ieee1516-2010/portico-tests/negative/datatypes/fixedRecordFieldNameMissing.xml", 3, 0, "",
     kNotResolved},
    {"ieee1516-2010/portico-tests/negative/datatypes/fixedRecordNameEmpty.xml", 3, 0, "",
     kNotResolved},
    {"ieee1516-2010/portico-tests/negative/datatypes/fixedRecordNameMissing.xml", 3, 0, "",
     kNotResolved},
    {"ieee1516-2010/portico-tests/negative/datatypes/simpleNameEmpty.xml", 3, 0, "", kNotResolved},
    {"ieee1516-2010/portico-tests/negative/datatypes/simpleNameMissing.xml", 3, 0, "",
     kNotResolved},
    {"ieee1516-2010/portico-tests/negative/datatypes/simpleRepresentationDoesntExist.xml", 3, 0, "",
     kNotResolved},
    {"ieee1516-2010/portico-tests/negative/datatypes/simpleRepresentationEmpty.xml", 3, 0, "",
     kNotResolved},
    {"ieee1516-2010/portico-tests/negative/datatypes/simpleRepresentationMissing.xml", 3, 0, "",
     kNotResolved},
    {"ieee1516-2010/portico-tests/negative/datatypes/simpleRepresentationNotABasicType.xml", 3, 0,
     "", kNotResolved},
    {"ieee1516-2010/portico-tests/negative/datatypes/"
     "variantRecordAlternativeDatatypeDoesntExist.xml",
     3, 0, "", kNotResolved},
    {"ieee1516-2010/portico-tests/negative/datatypes/variantRecordAlternativeDatatypeEmpty.xml", 3,
     0, "", kNotResolved},
    {"ieee1516-2010/portico-tests/negative/datatypes/variantRecordAlternativeDatatypeMissing.xml",
     3, 0, "", kNotResolved},
    {"ieee1516-2010/portico-tests/negative/datatypes/"
     "variantRecordAlternativeEnumeratorDoesntExist.xml",
     3, 0, "", kNotResolved},
    {"ieee1516-2010/portico-tests/negative/datatypes/variantRecordAlternativeEnumeratorEmpty.xml",
     3, 0, "", kNotResolved},
    {"ieee1516-2010/portico-tests/negative/datatypes/variantRecordAlternativeEnumeratorMissing.xml",
     3, 0, "", kNotResolved},
    {"ieee1516-2010/portico-tests/negative/datatypes/variantRecordAlternativeNameEmpty.xml", 3, 0,
     "", kNotResolved},
    {"ieee1516-2010/portico-tests/negative/datatypes/variantRecordAlternativeNameMissing.xml", 3, 0,
     "", kNotResolved},
    {"ieee1516-2010/portico-tests/testfom.xml", 3, 2,
     "Object class, a child of HLAobjectRoot, with no name found in FDD file.\n",
     "one class is written in the attribute form of 1516-2000, so it has no name element"},
    {"ieee1516-2010/portico-tests/testfomModule.xml", 3, 0, "", kComplete},
    {"ieee1516-2010/portico-tests/testfomModuleNoInteractions.xml", 3, 0,
     "Missing or invalid interactions table", kNoInteractions},
    {"ieee1516-2010/portico-tests/testfomModuleNoObjects.xml", 3, 0,
     "Missing or invalid objects table", kNoObjects},
    {"ieee1516-2010/restaurant-ieee/RestaurantFOMmodule.xml", 3, 0, "", kComplete},
    {"ieee1516-2010/restaurant-ieee/RestaurantSOMmodule.xml", 3, 0,
     "Unrecognized top-level tag: serviceUtilization", kSom},
    {"ieee1516-2010/rpr-fom-v2.0-draft18/RPR-FOM2D18.xml", 3, 0,
     "Missing or invalid transportations table", kUsesMimTransportations},
    {"ieee1516-2010/rpr-fom-v2.0-merged/RPR_FOM_v2.0_1516-2010.xml", 3, 0, "", kComplete},
    {"ieee1516-2010/rpr-fom-v2.0/RPR-Aggregate_v2.0.xml", 3, 0,
     "Missing or invalid transportations table", kUsesMimTransportations},
    {"ieee1516-2010/rpr-fom-v2.0/RPR-Base_v2.0.xml", 3, 0,
     "Missing or invalid transportations table", kUsesMimTransportations},
    {"ieee1516-2010/rpr-fom-v2.0/RPR-Communication_v2.0.xml", 3, 0,
     "Missing or invalid transportations table", kUsesMimTransportations},
    {"ieee1516-2010/rpr-fom-v2.0/RPR-DER_v2.0.xml", 3, 0,
     "Missing or invalid transportations table", kUsesMimTransportations},
    {"ieee1516-2010/rpr-fom-v2.0/RPR-Enumerations_v2.0.xml", 3, 0,
     "Missing or invalid transportations table", kUsesMimTransportations},
    {"ieee1516-2010/rpr-fom-v2.0/RPR-Foundation_v2.0.xml", 3, 0,
     "Missing or invalid transportations table", kUsesMimTransportations},
    {"ieee1516-2010/rpr-fom-v2.0/RPR-Logistics_v2.0.xml", 3, 0,
     "Missing or invalid transportations table", kUsesMimTransportations},
    {"ieee1516-2010/rpr-fom-v2.0/RPR-Minefield_v2.0.xml", 3, 0,
     "Missing or invalid transportations table", kUsesMimTransportations},
    {"ieee1516-2010/rpr-fom-v2.0/RPR-Physical_v2.0.xml", 3, 0,
     "Missing or invalid transportations table", kUsesMimTransportations},
    {"ieee1516-2010/rpr-fom-v2.0/RPR-SE_v2.0.xml", 3, 0, "Missing or invalid transportations table",
     kUsesMimTransportations},
    {"ieee1516-2010/rpr-fom-v2.0/RPR-SIMAN_v2.0.xml", 3, 0,
     "Missing or invalid transportations table", kUsesMimTransportations},
    {"ieee1516-2010/rpr-fom-v2.0/RPR-Switches_v2.0.xml", 3, 0, "Missing or invalid Data Types",
     kNoDataTypes},
    {"ieee1516-2010/rpr-fom-v2.0/RPR-UA_v2.0.xml", 3, 0, "Missing or invalid transportations table",
     kUsesMimTransportations},
    {"ieee1516-2010/rpr-fom-v2.0/RPR-Warfare_v2.0.xml", 3, 0, "Missing or invalid Data Types",
     kNoDataTypes},
    {"ieee1516-2010/spacefom/SISO_SpaceFOM_datatypes.xml", 3, 0,
     "Missing or invalid transportations table", kUsesMimTransportations},
    {"ieee1516-2010/spacefom/SISO_SpaceFOM_entity.xml", 3, 0, "Missing or invalid Data Types",
     kNoDataTypes},
    {"ieee1516-2010/spacefom/SISO_SpaceFOM_environment.xml", 3, 0, "Missing or invalid Data Types",
     kNoDataTypes},
    {"ieee1516-2010/spacefom/SISO_SpaceFOM_management.xml", 3, 0,
     "Missing or invalid transportations table", kUsesMimTransportations},
    {"ieee1516-2010/spacefom/SISO_SpaceFOM_management2.xml", 3, 0,
     "Missing or invalid transportations table", kUsesMimTransportations},
    {"ieee1516-2010/spacefom/SISO_SpaceFOM_switches.xml", 3, 0, "Missing or invalid Data Types",
     kNoDataTypes},
    {"ieee1516-2010/trickhla/BallFOM.xml", 3, 0, "Missing or invalid transportations table",
     kUsesMimTransportations},
    {"ieee1516-2010/trickhla/BallFOM_SpaceFOM.xml", 3, 0,
     "Missing or invalid transportations table", kUsesMimTransportations},
    {"ieee1516-2010/trickhla/Encoders_Test_FOM.xml", 3, 0,
     "Missing or invalid transportations table", kUsesMimTransportations},
    {"ieee1516-2010/trickhla/FixedRecordTest.xml", 3, 0, "Missing or invalid transportations table",
     kUsesMimTransportations},
    {"ieee1516-2010/trickhla/FluidDistIfFOM.xml", 3, 0, "", kComplete},
    {"ieee1516-2010/trickhla/IMSim_management.xml", 3, 0,
     "Missing or invalid transportations table", kUsesMimTransportations},
    {"ieee1516-2010/trickhla/S_FOMfile.xml", 3, 0, "", kComplete},
    {"ieee1516-2010/trickhla/SimpleSimConfig.xml", 3, 0, "Missing or invalid transportations table",
     kUsesMimTransportations},
    {"ieee1516-2010/trickhla/SimpleSimConfigFOM.xml", 3, 0, "", kComplete},
    {"ieee1516-2010/trickhla/SineWave.xml", 3, 0, "Missing or invalid transportations table",
     kUsesMimTransportations},
    {"ieee1516-2010/trickhla/Sine_FOM.xml", 3, 0, "Missing or invalid Data Types", kNoDataTypes},
    {"ieee1516-2010/trickhla/TrickHLAFreezeInteraction.xml", 3, 0, "Missing or invalid Data Types",
     kNoDataTypes},
    {"ieee1516-2025/netn-fom-v4.0-hla4/NETN-AIS.xml", 4, 0,
     "Missing or invalid transportations table", kUsesMimTransportations},
    {"ieee1516-2025/netn-fom-v4.0-hla4/NETN-BASE.xml", 4, 0,
     "Missing or invalid transportations table", kUsesMimTransportations},
    {"ieee1516-2025/netn-fom-v4.0-hla4/NETN-CBRN.xml", 4, 0,
     "Missing or invalid transportations table", kUsesMimTransportations},
    {"ieee1516-2025/netn-fom-v4.0-hla4/NETN-COM.xml", 4, 0,
     "Missing or invalid transportations table", kUsesMimTransportations},
    {"ieee1516-2025/netn-fom-v4.0-hla4/NETN-DIM.xml", 4, 0,
     "Missing or invalid transportations table", kUsesMimTransportations},
    {"ieee1516-2025/netn-fom-v4.0-hla4/NETN-ENTITY.xml", 4, 0,
     "Missing or invalid transportations table", kUsesMimTransportations},
    {"ieee1516-2025/netn-fom-v4.0-hla4/NETN-ETR.xml", 4, 0,
     "Missing or invalid transportations table", kUsesMimTransportations},
    {"ieee1516-2025/netn-fom-v4.0-hla4/NETN-LOG.xml", 4, 0,
     "Missing or invalid transportations table", kUsesMimTransportations},
    {"ieee1516-2025/netn-fom-v4.0-hla4/NETN-METOC.xml", 4, 0,
     "Missing or invalid transportations table", kUsesMimTransportations},
    {"ieee1516-2025/netn-fom-v4.0-hla4/NETN-MRM.xml", 4, 0,
     "Missing or invalid transportations table", kUsesMimTransportations},
    {"ieee1516-2025/netn-fom-v4.0-hla4/NETN-ORG.xml", 4, 0,
     "Missing or invalid transportations table", kUsesMimTransportations},
    {"ieee1516-2025/netn-fom-v4.0-hla4/NETN-SE.xml", 4, 0,
     "Missing or invalid transportations table", kUsesMimTransportations},
    {"ieee1516-2025/netn-fom-v4.0-hla4/NETN-SMC.xml", 4, 0,
     "Missing or invalid transportations table", kUsesMimTransportations},
    {"ieee1516-2025/netn-fom-v4.0-hla4/NETN-TMR.xml", 4, 0,
     "Missing or invalid transportations table", kUsesMimTransportations},
    {"ieee1516-2025/restaurant-2025/RestaurantExtensionFOMmodule-2025.xml", 4, 0,
     "Missing or invalid transportations table", kUsesMimTransportations},
    {"ieee1516-2025/restaurant-2025/RestaurantFOMmodule-2025.xml", 4, 0, "", kComplete},
    {"ieee1516-2025/restaurant-2025/RestaurantSOMmodule-2025.xml", 4, 0,
     "Unrecognized top-level tag: serviceUtilization", kSom},
};

const Expected* expectedFor(const std::string& relative) {
  for (const Expected& expected : theExpected) {
    if (relative == expected.file) return &expected;
  }
  return nullptr;
}

TEST(FedCorpus1516e, EveryFileGivesItsFormatResultAndText) {
  for (const Expected& expected : theExpected) {
    SCOPED_TRACE(std::string(expected.file) + ": " + expected.why);
    Read read = readModule(theData + "/" + expected.file);
    EXPECT_EQ(read.type, expected.type);
    EXPECT_EQ(read.result, expected.result);
    EXPECT_EQ(read.error, expected.error);
  }
}

TEST(FedCorpus1516e, EveryFileOfTheCorpusIsListed) {
  int files = 0;
  for (const char* dialect : {"ieee1516-2010", "ieee1516-2025"}) {
    for (const auto& entry :
         std::filesystem::recursive_directory_iterator(theData + "/" + dialect)) {
      if (entry.path().extension() != ".xml") continue;
      ++files;
      std::string relative = entry.path().lexically_relative(theData).string();
      EXPECT_NE(expectedFor(relative), nullptr) << relative;
    }
  }
  EXPECT_EQ(files, static_cast<int>(sizeof theExpected / sizeof theExpected[0]));
}

TEST(FedCorpus1516e, FilesReadWholeDeliverEveryElement) {
  int checked = 0;
  for (const Expected& expected : theExpected) {
    if (expected.result != 0 || expected.type < DtFomTypeEvolved) continue;
    SCOPED_TRACE(expected.file);
    std::string path = theData + "/" + expected.file;
    Read read = readModule(path);
    EXPECT_EQ(read.counts, scan(ktltest::fileText(path)));
    ++checked;
  }
  EXPECT_EQ(checked, 165);
}

TEST(FedCorpus1516e, TheNegativeDataTypeFilesReadUnderStrictCheckingToo) {
  for (const Expected& expected : theExpected) {
    if (expected.why != kNotResolved) continue;
    SCOPED_TRACE(expected.file);
    Read read = readModule(theData + "/" + expected.file, DtStrictUnexpectedContent);
    EXPECT_EQ(read.result, 0);
    EXPECT_EQ(read.error, "");
  }
}

TEST(FedCorpus1516e, TheLargeModelsCountAgainstTheirDocuments) {
  struct Large {
    const char* file;
    int objectClasses;
    int interactionClasses;
    int dataTypes;
  };
  const Large large[] = {
      {"ieee1516-2010/rpr-fom-v2.0-merged/RPR_FOM_v2.0_1516-2010.xml", 64, 79, 286},
      {"ieee1516-2010/netn-merged/NETN-Merged-With-RPR.xml", 110, 194, 528},
  };
  for (const Large& model : large) {
    SCOPED_TRACE(model.file);
    std::string path = theData + "/" + model.file;
    Read read = readModule(path);
    ASSERT_EQ(read.result, 0);
    Counts scanned = scan(ktltest::fileText(path));
    EXPECT_EQ(read.counts, scanned);
    EXPECT_EQ(scanned.objectClasses, model.objectClasses);
    EXPECT_EQ(scanned.interactionClasses, model.interactionClasses);
    EXPECT_EQ(scanned.dataTypes(), model.dataTypes);
  }
}

// The held MIM documents, read by name with no file on disk, deliver what the published copies
// hold.
TEST(FedCorpus1516e, TheHeldMimsCountAgainstThePublishedCopies) {
  struct Mim {
    DtFomType type;
    const char* copy;
    int objectClasses;
    int interactionClasses;
  };
  const Mim mims[] = {{DtFomTypeEvolved, "mim/HLAstandardMIM.xml", 4, 85},
                      {DtFomType2025, "mim/HLAstandardMIM-2025.xml", 4, 93}};
  ktltest::TempDir empty;
  for (const Mim& mim : mims) {
    SCOPED_TRACE(mim.copy);
    std::unique_ptr<DtFedReader> reader(DtFedReaderFactory().makeFedReader(mim.type));
    CountingTarget target;
    target.setFomType(mim.type);
    int result = -1;
    std::string name = empty.file(DtFedReader::standardMimFileName(mim.type).c_str());
    ktltest::captureOutput(
        [&] { result = reader->readFed(name.c_str(), &target, 1, false, false); });
    EXPECT_EQ(result, 0) << reader->lastError().c_str();
    Counts scanned = scan(ktltest::fileText(std::string(KTL_SOURCE_DIR) + "/data/" + mim.copy));
    EXPECT_EQ(target.counts, scanned);
    EXPECT_EQ(scanned.objectClasses, mim.objectClasses);
    EXPECT_EQ(scanned.interactionClasses, mim.interactionClasses);
  }
}

// A module of the corpus in dir, with its schema location pointed at the corpus's own DIF
// schema, copied beside it.
std::string withLocalSchema(const ktltest::TempDir& dir, const std::string& relative) {
  std::string text = ktltest::fileText(theData + "/" + relative);
  const std::string url =
      "http://standards.ieee.org/downloads/1516/1516.2-2010/IEEE1516-DIF-2010.xsd";
  size_t at = text.find(url);
  if (at == std::string::npos) return "";
  std::string schema =
      dir.write("IEEE1516-DIF-2010.xsd",
                ktltest::fileText(theData + "/ieee1516-2010/schemas/IEEE1516-DIF-2010.xsd"));
  text.replace(at, url.size(), schema);
  return dir.write(std::filesystem::path(relative).filename().string(), text);
}

TEST(FedCorpus1516e, TheRprModulesAgainstTheSchema) {
  ktltest::TempDir dir;
  const std::string schema = dir.file("IEEE1516-DIF-2010.xsd");
  int valid = 0;
  for (const Expected& expected : theExpected) {
    std::string relative = expected.file;
    if (relative.rfind("ieee1516-2010/rpr-fom-v2.0/", 0) != 0) continue;
    SCOPED_TRACE(relative);
    std::string path = withLocalSchema(dir, relative);
    ASSERT_FALSE(path.empty());
    Read read = readModule(path, 0, true);
    if (relative.find("RPR-Enumerations") != std::string::npos) {
      // Its reference names a document in words where the schema wants a URI.
      EXPECT_EQ(read.result, 2);
      EXPECT_EQ(read.error, "FDD file did not pass validation against schema " + schema);
      EXPECT_EQ(read.counts, Counts());
    } else {
      EXPECT_EQ(read.result, expected.result);
      EXPECT_EQ(read.error, expected.error);
      EXPECT_EQ(read.counts, scan(ktltest::fileText(path)));
      ++valid;
    }
  }
  EXPECT_EQ(valid, 13);
}

// Whether libxml2 alone finds the document at path valid against the schema at schemaPath.
bool validAgainst(const std::string& path, const std::string& schemaPath) {
  std::unique_ptr<xmlSchemaParserCtxt, void (*)(xmlSchemaParserCtxt*)> parser(
      xmlSchemaNewParserCtxt(schemaPath.c_str()), xmlSchemaFreeParserCtxt);
  std::unique_ptr<xmlSchema, void (*)(xmlSchema*)> schema(xmlSchemaParse(parser.get()),
                                                          xmlSchemaFree);
  std::unique_ptr<xmlSchemaValidCtxt, void (*)(xmlSchemaValidCtxt*)> validation(
      xmlSchemaNewValidCtxt(schema.get()), xmlSchemaFreeValidCtxt);
  xmlSchemaSetValidErrors(validation.get(), nullptr, nullptr, nullptr);
  std::unique_ptr<xmlDoc, void (*)(xmlDoc*)> doc(xmlReadFile(path.c_str(), nullptr, 0), xmlFreeDoc);
  bool valid = false;
  // libxml2 reports each fault on standard error.
  ktltest::captureOutput(
      [&] { valid = doc && xmlSchemaValidateDoc(validation.get(), doc.get()) == 0; });
  return valid;
}

TEST(FedCorpus1516e, EveryModuleThatNamesASchemaAgainstTheLocalOne) {
  ktltest::TempDir dir;
  const std::string schema =
      dir.write("IEEE1516-DIF-2010.xsd",
                ktltest::fileText(theData + "/ieee1516-2010/schemas/IEEE1516-DIF-2010.xsd"));
  int valid = 0;
  int invalid = 0;
  for (const Expected& expected : theExpected) {
    if (expected.type != DtFomTypeEvolved) continue;
    std::string text = ktltest::fileText(theData + "/" + expected.file);
    const std::string attribute = "schemaLocation=\"";
    size_t at = text.find(attribute);
    if (at == std::string::npos) continue;
    at += attribute.size();
    size_t end = text.find('"', at);
    ASSERT_NE(end, std::string::npos);
    // The reader takes the location after the last blank of the attribute.
    text.replace(at, end - at, "http://standards.ieee.org/IEEE1516-2010 " + schema);
    SCOPED_TRACE(expected.file);
    std::string path = dir.write("module.xml", text);
    Read read = readModule(path, 0, true);
    if (validAgainst(path, schema)) {
      EXPECT_EQ(read.result, expected.result);
      EXPECT_EQ(read.error, expected.error);
      ++valid;
    } else {
      EXPECT_EQ(read.result, 2);
      EXPECT_EQ(read.error, "FDD file did not pass validation against schema " + schema);
      EXPECT_EQ(read.counts, Counts());
      ++invalid;
    }
  }
  EXPECT_EQ(valid, 80);
  EXPECT_EQ(invalid, 66);
}

// Destroying an XML reader cleans up libxml2's global state, which a compiled schema depends
// on: the next validation, by this reader or another, compiles the schema again instead of
// running on freed state (it used to hang).
TEST(FedCorpus1516e, TheSchemaIsCompiledAgainAfterAReaderIsDestroyed) {
  ktltest::TempDir dir;
  std::string module = withLocalSchema(dir, "ieee1516-2010/rpr-fom-v2.0/RPR-Base_v2.0.xml");
  ASSERT_FALSE(module.empty());
  for (int round = 0; round < 3; ++round) {
    SCOPED_TRACE(round);
    Read read = readModule(module, 0, true);
    EXPECT_EQ(read.result, 0) << read.error;
    EXPECT_GT(read.counts.dataTypes(), 0);
  }
  // And one reader, kept, validates any number of times with one compiled schema.
  DtFedReader1516e reader;
  reader.setSchemaValidationEnabled(true);
  for (int round = 0; round < 3; ++round) {
    CountingTarget target;
    int result = -1;
    ktltest::captureOutput(
        [&] { result = reader.readFed(module.c_str(), &target, 0, true, false); });
    EXPECT_EQ(result, 0) << reader.lastError().c_str();
  }
}

TEST(FedCorpus1516e, ASchemaNamedByItsPublishedUrlIsNotFetched) {
  const std::string module = theData + "/ieee1516-2010/rpr-fom-v2.0/RPR-Base_v2.0.xml";
  Read read = readModule(module, 0, true);
  EXPECT_EQ(read.result, 2);
  EXPECT_EQ(read.error,
            "Could not open schema file "
            "http://standards.ieee.org/downloads/1516/1516.2-2010/IEEE1516-DIF-2010.xsd");
  // Without validation the same module reads.
  EXPECT_EQ(readModule(module).result, 0);
}

TEST(FedCorpus1516e, CopiesMatchTheSharedCorpus) {
  const std::string shared = std::string(KTL_SOURCE_DIR) + "/../shared/fom-corpus";
  if (!std::filesystem::exists(shared)) GTEST_SKIP() << "no shared corpus on this machine";
  for (const char* dialect : {"ieee1516-2010", "ieee1516-2025"}) {
    for (const auto& entry :
         std::filesystem::recursive_directory_iterator(shared + "/" + dialect)) {
      if (!entry.is_regular_file()) continue;
      std::string relative = entry.path().lexically_relative(shared).string();
      EXPECT_EQ(ktltest::fileText(theData + "/" + relative), ktltest::fileText(entry.path()))
          << relative;
    }
  }
}

}  // namespace
