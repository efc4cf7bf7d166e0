#ifndef KTL_EVAL_H
#define KTL_EVAL_H

#include <ktl/memory.h>

namespace KORRti {

// How many bindings of the frame hold a closure over that same frame that nothing else holds.
int EnvLocalProcRefcnt(DtlObjPtr const& frame);
int EnvLocalProcRefcnt(DtlObj* frame);

}  // namespace KORRti

#endif
