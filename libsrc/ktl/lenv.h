#ifndef KTL_LENV_H
#define KTL_LENV_H

#include <ktl/memory.h>
#include <util/export.h>

KTL_API_BEGIN

namespace KORRti {

/// One binding of a frame's table.
struct symbol_entry {
  symbol_entry(DtlObjPtr const& boundSymbol, DtlObjPtr const& boundValue)
      : symbol(boundSymbol), value(boundValue), next(nullptr) {}
  DtlObjPtr symbol;
  DtlObjPtr value;
  symbol_entry* next;
};

/// The bucket of a name: the byte sum of its characters, modulo 256.
int bucket_number(char const* name);

/// A frame's bindings: 256 chains, newest binding first, looked up by name.
class DtlHashTable {
 public:
  static const int kBuckets = 256;

  DtlHashTable();
  ~DtlHashTable();
  DtlHashTable(DtlHashTable const&) = delete;
  DtlHashTable& operator=(DtlHashTable const&) = delete;

  /// The value bound to name, or a null handle.
  DtlObjPtr lookup(char const* name);
  /// The symbol bound under name, or a null handle.
  DtlObjPtr findsym(char const* name);
  DtlObjPtr insert(DtlObjPtr const& symbol, DtlObjPtr const& value, DtlObjPtr const& frame);
  DtlObjPtr rebind(DtlObjPtr const& symbol, DtlObjPtr const& value, DtlObjPtr const& frame);
  void dump();
  /// A list of (symbol value) pairs, ended by an empty cell; nil for an empty table.
  DtlObjPtr bindings();

  /// A table for a new frame, from the calling thread's store of emptied tables when it has
  /// one; null if memory ran out. Frames come and go with every procedure call.
  static DtlHashTable* acquire();
  /// Empties the table and keeps it for a later frame of this thread, or frees it.
  static void release(DtlHashTable* table);

  symbol_entry* bucket(int index) const { return buckets_[index]; }
  /// How many bindings hold a procedure.
  int procedureBindings() const { return procedureBindings_; }

 private:
  symbol_entry* find(char const* name);
  void clear();
  symbol_entry* buckets_[kBuckets];
  int bindings_ = 0;
  int procedureBindings_ = 0;
};

/// Frame primitives.
DtlObjPtr DtlNewFrame(DtlObjPtr const& args, DtlObjPtr const& env);
DtlObjPtr DtlTheFrame(DtlObjPtr const& args, DtlObjPtr const& env);
DtlObjPtr DtlFrameBindings(DtlObjPtr const& args, DtlObjPtr const& env);
DtlObjPtr DtlFrameParent(DtlObjPtr const& args, DtlObjPtr const& env);
DtlObjPtr DtlFrameBound(DtlObjPtr const& args, DtlObjPtr const& env);
DtlObjPtr DtlEnvDump(DtlObjPtr const& args, DtlObjPtr const& env);

}  // namespace KORRti

KTL_API_END

#endif
