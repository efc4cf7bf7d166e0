#ifndef KTL_LOCATIVE_H
#define KTL_LOCATIVE_H

// Locatives remember a host address and nothing else: DtcPtrToNode(DtlLocativeTag, p) makes
// one, DtcLocativep tests for one, and = and equal compare the addresses. They have no
// arithmetic, and the address is never followed or freed.
#include <ktl/memory.h>
#include <ktl/null.h>

#endif
