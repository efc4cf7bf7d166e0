#ifndef KTL_APPENV_H
#define KTL_APPENV_H

#include <util/export.h>

KTL_API_BEGIN

namespace KORRti {

/// Process set-up for hosts: initialises libxml2's parser. Nothing in the library calls it.
void initAppEnv();

}  // namespace KORRti

KTL_API_END

#endif
