#include <ktl/appEnv.h>

#include <libxml/parser.h>

namespace KORRti {

void initAppEnv() {
  xmlInitParser();
}

}  // namespace KORRti
