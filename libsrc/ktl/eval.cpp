#include <ktl/eval.h>

#include <ktl/io.h>
#include <ktl/lenv.h>

namespace KORRti {

int EnvLocalProcRefcnt(DtlObj* frame) {
  if (!frame || frame->tag() != DtlFrameTag) DtcHaltAndCatchFire("non-frame to EnvLocalProcRefcnt");
  DtlHashTable* table = frame->frameBindings();
  if (!table) return 0;
  // Raw walk: counted copies would change the very counts being measured.
  int count = 0;
  for (int bucket = 0; bucket < DtlHashTable::kBuckets; ++bucket) {
    for (symbol_entry* entry = table->bucket(bucket); entry; entry = entry->next) {
      DtlObj* value = entry->value.get();
      if (value && value->tag() == DtlProcedureTag && value->procEnvObj() == frame &&
          value->refcnt() == 1) {
        ++count;
      }
    }
  }
  return count;
}

int EnvLocalProcRefcnt(DtlObjPtr const& frame) {
  return EnvLocalProcRefcnt(frame.get());
}

}  // namespace KORRti
