#include <ktl/lenv.h>

#include <cstring>
#include <new>
#include <vector>

#include <ktl/atom.h>
#include <ktl/io.h>
#include <ktl/list.h>
#include <ktl/null.h>
#include <util/notify.h>

namespace KORRti {

namespace {

// The name a binding is filed under; only symbols have one.
char const* nameOf(DtlObj* symbol) {
  if (!symbol || symbol->tag() != DtlSymbolTag || !symbol->pname()) return "";
  return symbol->pname();
}

// Every walk over a chain insists on symbols.
void checkSymbol(symbol_entry* entry) {
  if (entry->symbol.isNull() || entry->symbol->tag() != DtlSymbolTag) {
    DtcHaltAndCatchFire("non-symbol in environment");
  }
}

bool isFrame(DtlObjPtr const& x) {
  return !x.isNull() && x->tag() == DtlFrameTag;
}

int isProcedure(DtlObjPtr const& x) {
  return !x.isNull() && x->tag() == DtlProcedureTag;
}

}  // namespace

int bucket_number(char const* name) {
  int sum = 0;
  for (char const* c = name; *c; ++c) sum += static_cast<signed char>(*c);
  return sum & 0xFF;
}

DtlHashTable::DtlHashTable() {
  for (auto& head : buckets_) head = nullptr;
}

DtlHashTable::~DtlHashTable() {
  clear();
}

void DtlHashTable::clear() {
  // Stops at the last binding rather than at the last bucket: most frames hold a few. Every
  // bucket is empty afterwards.
  for (int bucket = 0; bindings_ > 0 && bucket < kBuckets; ++bucket) {
    for (symbol_entry*& head = buckets_[bucket]; head; --bindings_) {
      symbol_entry* next = head->next;
      delete head;
      head = next;
    }
  }
  bindings_ = 0;
  procedureBindings_ = 0;
}

namespace {

// Set once the thread's store is gone: frames that die later (say, in a host's static object
// at process exit) then free their tables directly.
thread_local bool tableStoreGone = false;

// Emptied tables kept for the frames of later calls on this thread, freed when it ends.
class TableStore {
 public:
  ~TableStore() {
    for (DtlHashTable* table : tables_) delete table;
    tables_.clear();
    tableStoreGone = true;
  }
  DtlHashTable* take() {
    if (tables_.empty()) return nullptr;
    DtlHashTable* table = tables_.back();
    tables_.pop_back();
    return table;
  }
  bool keep(DtlHashTable* table) {
    if (tables_.size() >= kMaxKept) return false;
    tables_.push_back(table);
    return true;
  }

 private:
  static const size_t kMaxKept = 64;
  std::vector<DtlHashTable*> tables_;
};

thread_local TableStore tableStore;

}  // namespace

DtlHashTable* DtlHashTable::acquire() {
  DtlHashTable* table = tableStoreGone ? nullptr : tableStore.take();
  return table ? table : new (std::nothrow) DtlHashTable();
}

void DtlHashTable::release(DtlHashTable* table) {
  if (!table) return;
  // Releasing the bindings can run other code first; the table is only kept once empty.
  table->clear();
  if (tableStoreGone || !tableStore.keep(table)) delete table;
}

symbol_entry* DtlHashTable::find(char const* name) {
  for (symbol_entry* entry = buckets_[bucket_number(name)]; entry; entry = entry->next) {
    checkSymbol(entry);
    if (std::strcmp(nameOf(entry->symbol.get()), name) == 0) return entry;
  }
  return nullptr;
}

DtlObjPtr DtlHashTable::lookup(char const* name) {
  symbol_entry* entry = find(name);
  return entry ? entry->value : DtlObjPtr();
}

DtlObjPtr DtlHashTable::findsym(char const* name) {
  symbol_entry* entry = find(name);
  return entry ? entry->symbol : DtlObjPtr();
}

DtlObjPtr DtlHashTable::insert(DtlObjPtr const& symbol, DtlObjPtr const& value, DtlObjPtr const&) {
  char const* name = nameOf(symbol.get());
  if (!lookup(name).isNull()) DtcHaltAndCatchFire("cannot insert binding with duplicate key");
  symbol_entry* entry = new (std::nothrow) symbol_entry(symbol, value);
  if (!entry) DtcHaltAndCatchFire("out of memory in DtlHashTable::insert");
  int bucket = bucket_number(name);
  if (isProcedure(value)) ++procedureBindings_;
  ++bindings_;
  entry->next = buckets_[bucket];
  buckets_[bucket] = entry;
  return symbol;
}

DtlObjPtr DtlHashTable::rebind(DtlObjPtr const& symbol, DtlObjPtr const& value, DtlObjPtr const&) {
  symbol_entry* entry = find(nameOf(symbol.get()));
  if (!entry) DtcHaltAndCatchFire("symbol was not found in DtlHashTable::rebind");
  procedureBindings_ += isProcedure(value) - isProcedure(entry->value);
  entry->value = value;
  return value;
}

void DtlHashTable::dump() {
  for (int bucket = 0; bucket < kBuckets; ++bucket) {
    if (!buckets_[bucket]) continue;
    DtInfo("[%d]:", bucket);
    for (symbol_entry* entry = buckets_[bucket]; entry; entry = entry->next) {
      checkSymbol(entry);
      DtInfo << " " << nameOf(entry->symbol.get()) << " -> ";
      DtcPrint(entry->value);
    }
  }
}

DtlObjPtr DtlHashTable::bindings() {
  // The list ends in an empty cell, not in nil, unless the table is empty.
  DtlObjPtr list(DtlConsTag);
  bool seen = false;
  for (symbol_entry* head : buckets_) {
    for (symbol_entry* entry = head; entry; entry = entry->next) {
      checkSymbol(entry);
      list = DtcCons(DtcCons(entry->symbol, DtcCons(entry->value, DtlObjPtr::nil())), list);
      seen = true;
    }
  }
  return seen ? list : DtlObjPtr::nil();
}

// ---- primitives ------------------------------------------------------------------------

DtlObjPtr DtlNewFrame(DtlObjPtr const& args, DtlObjPtr const&) {
  if (DtcLength(args) != 1) DtcHaltAndCatchFire("wrong number of args to new-frame");
  DtlObjPtr parent = DtcCar(args);
  if (!isFrame(parent)) DtcHaltAndCatchFire("non-frame to new-frame");
  DtlObjPtr frame(DtlFrameTag);
  if (frame.isNull()) DtcHaltAndCatchFire("out of memory in DtlNewFrame");
  frame->setFrameParent(parent);
  return frame;
}

DtlObjPtr DtlTheFrame(DtlObjPtr const&, DtlObjPtr const& env) {
  return env;
}

DtlObjPtr DtlFrameBindings(DtlObjPtr const& args, DtlObjPtr const&) {
  if (DtcLength(args) != 1) DtcHaltAndCatchFire("wrong number of args to frame-bindings");
  DtlObjPtr frame = DtcCar(args);
  if (!isFrame(frame)) DtcHaltAndCatchFire("non-frame to frame-bindings");
  return frame->frameBindings()->bindings();
}

DtlObjPtr DtlFrameParent(DtlObjPtr const& args, DtlObjPtr const&) {
  if (DtcLength(args) != 1) DtcHaltAndCatchFire("wrong number of args to frame-parent");
  DtlObjPtr frame = DtcCar(args);
  if (!isFrame(frame)) DtcHaltAndCatchFire("non-frame to frame-Parent");
  DtlObjPtr parent = frame->frameParent();
  if (parent.isNull()) DtcHaltAndCatchFire("frame-parent called on frame without parent");
  return parent;
}

DtlObjPtr DtlFrameBound(DtlObjPtr const& args, DtlObjPtr const&) {
  if (DtcLength(args) != 2) DtcHaltAndCatchFire("wrong number of args to frame-bound");
  DtlObjPtr frame = DtcCar(args);
  DtlObjPtr symbol = DtcCadr(args);
  if (!isFrame(frame)) DtcHaltAndCatchFire("non-frame to frame-bound");
  if (symbol.isNull() || symbol->tag() != DtlSymbolTag) {
    DtcHaltAndCatchFire("non-symbol to frame-bound");
  }
  return DtcCBooleanToLispBoolean(DtcBoundp(symbol, frame));
}

DtlObjPtr DtlEnvDump(DtlObjPtr const&, DtlObjPtr const& env) {
  if (isFrame(env)) env->frameBindings()->dump();
  return DtlObjPtr::nil();
}

}  // namespace KORRti
