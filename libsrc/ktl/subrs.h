#ifndef KTL_SUBRS_H
#define KTL_SUBRS_H

#include <ktl/memory.h>

namespace KORRti {

// if and cond answer the list of forms still to run, which the evaluator runs in tail position.
DtlObjPtr DtlIf(DtlObjPtr const& args, DtlObjPtr const& env);
DtlObjPtr DtlCond(DtlObjPtr const& args, DtlObjPtr const& env);
// set! and setqb: assign in the nearest frame up the chain that binds the name.
DtlObjPtr DtlSetqBoundVariable(DtlObjPtr const& args, DtlObjPtr const& env);

}  // namespace KORRti

#endif
