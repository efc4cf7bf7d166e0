#ifndef UTIL_UTIL_H
#define UTIL_UTIL_H

#include <util/dtException.h>
#include <util/dtFilename.h>
#include <util/dtList.h>
#include <util/dtString.h>
#include <util/export.h>
#include <util/notify.h>
#include <util/system.h>

#endif
