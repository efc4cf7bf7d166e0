#ifndef UTIL_SYSTEM_H
#define UTIL_SYSTEM_H

#include <util/export.h>

KTL_API_BEGIN

namespace KORRti {

/// The platform's name, as uname reports it ("Linux").
const char* DtOperatingSystem();
/// The next key pressed, or 0 at once if none is waiting on standard input.
int DtPollBlockingInputChar();
void DtSleep(double seconds);

}  // namespace KORRti

KTL_API_END

#endif
