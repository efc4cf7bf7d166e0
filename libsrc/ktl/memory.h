#ifndef KTL_MEMORY_H
#define KTL_MEMORY_H

#include <util/export.h>
#include <cstdint>
#include <cstdio>

KTL_API_BEGIN

namespace KORRti {

class DtList;
class DtcParam;
class DtlHashTable;
class DtlObj;
class DtlObjPtr;

/// The kind of a Lisp value. The numbers are fixed: dispatch and range checks depend on them.
enum DtlTagType : int32_t {
  DtlNilTag = 0,
  DtlSymbolTag = 1,
  DtlFixnumTag = 2,
  DtlFlonumTag = 3,
  DtlConsTag = 4,
  DtlSpecialFormTag = 5,
  DtlCompiledCTag = 6,
  DtlStringTag = 7,
  DtlLocativeTag = 8,
  DtlProcedureTag = 9,
  DtlFrameTag = 10
};

/// The one signature of every primitive, special form or compiled function.
typedef DtlObjPtr (*DtlPrimitive)(DtlObjPtr const& args, DtlObjPtr const& env);

/// Reference counting of the records; both are no-ops for null. Releasing the last reference
/// destroys the record, and a frame kept alive only by its own closures goes too.
void IncObjRefCnt(DtlObj* obj);
void DecObjRefCnt(DtlObj* obj) noexcept;

/// Counted handle of a DtlObj. A default handle is null, which is not nil.
class DtlObjPtr {
 public:
  DtlObjPtr() : ptr_(nullptr) {}
  DtlObjPtr(DtlObjPtr const& other) : ptr_(other.ptr_) { IncObjRefCnt(ptr_); }
  DtlObjPtr(DtlObjPtr&& other) noexcept : ptr_(other.ptr_) { other.ptr_ = nullptr; }
  /// A new record of that kind, held with count 1; a null handle if there is no memory for the
  /// record. What the record needs besides (a frame's binding table, a string's text) halts
  /// with "out of memory in ..." when it can't be had, as every other halt does.
  explicit DtlObjPtr(DtlTagType tag);
  explicit DtlObjPtr(int fixnum);
  explicit DtlObjPtr(double flonum);
  explicit DtlObjPtr(char const* string);
  /// Takes a counted reference to an existing record.
  explicit DtlObjPtr(DtlObj* obj) : ptr_(obj) { IncObjRefCnt(ptr_); }
  ~DtlObjPtr() { DecObjRefCnt(ptr_); }

  DtlObjPtr& operator=(DtlObjPtr const& other) {
    // Take the new reference before dropping the old one: self-assignment and assigning a
    // list to one of its own tails stay safe.
    DtlObj* old = ptr_;
    IncObjRefCnt(other.ptr_);
    ptr_ = other.ptr_;
    DecObjRefCnt(old);
    return *this;
  }
  DtlObjPtr& operator=(DtlObjPtr&& other) noexcept {
    if (this != &other) {
      DtlObj* old = ptr_;
      ptr_ = other.ptr_;
      other.ptr_ = nullptr;
      DecObjRefCnt(old);
    }
    return *this;
  }

  /// Identity of the records, never equality of their contents.
  bool operator==(DtlObjPtr const& other) const { return ptr_ == other.ptr_; }
  bool operator!=(DtlObjPtr const& other) const { return ptr_ != other.ptr_; }
  operator void*() const { return ptr_; }
  DtlObj* operator->() const { return ptr_; }
  DtlObj& operator*() const { return *ptr_; }
  bool isNull() const { return ptr_ == nullptr; }
  DtlObj* get() const { return ptr_; }

  /// The thread's nil, t and unbound singletons, made on first use; the thread gives up its
  /// handles when it ends.
  static DtlObjPtr const& nil();
  static DtlObjPtr const& t();
  static DtlObjPtr const& unbound();

 private:
  friend void DecObjRefCnt(DtlObj* obj) noexcept;
  /// Gives up the reference without releasing it.
  DtlObj* detach() {
    DtlObj* obj = ptr_;
    ptr_ = nullptr;
    return obj;
  }
  DtlObj* ptr_;
};

class DtlNilObjPtr : public DtlObjPtr {
 public:
  DtlNilObjPtr();
};

class DtlObjTPtr : public DtlObjPtr {
 public:
  DtlObjTPtr();
};

class DtlObjUnboundPtr : public DtlObjPtr {
 public:
  DtlObjUnboundPtr();
};

extern thread_local DtlObjPtr* theNilPtr;
extern thread_local DtlObjPtr* theTPtr;
extern thread_local DtlObjPtr* theUnboundPtr;

/// The record of every Lisp value; the tag says which fields mean anything.
class DtlObj {
 public:
  explicit DtlObj(DtlTagType tag);
  explicit DtlObj(int fixnum);
  explicit DtlObj(double flonum);
  explicit DtlObj(char const* string);
  ~DtlObj();
  DtlObj(DtlObj const&) = delete;
  DtlObj& operator=(DtlObj const&) = delete;

  DtlTagType tag() const { return tag_; }
  void setTag(DtlTagType tag) { tag_ = tag; }
  int refcnt() const { return refcnt_; }
  void setRefcnt(int count) { refcnt_ = count; }
  char gone() const { return gone_; }
  void setGone(char gone) { gone_ = gone; }

  /// Object slots. The readers return counted copies, but procEnv gives the slot itself.
  DtlObjPtr car() const { return slot1_; }
  DtlObjPtr cdr() const { return slot2_; }
  void setCar(DtlObjPtr const& value) { slot1_ = value; }
  void setCdr(DtlObjPtr const& value) { slot2_ = value; }
  DtlObjPtr procParams() const { return slot1_; }
  DtlObjPtr procBody() const { return slot2_; }
  DtlObjPtr& procEnv() { return slot3_; }
  void setProcParams(DtlObjPtr const& value) { slot1_ = value; }
  void setProcBody(DtlObjPtr const& value) { slot2_ = value; }
  void setProcEnv(DtlObjPtr const& value) { slot3_ = value; }
  DtlObjPtr frameParent() const { return slot1_; }
  void setFrameParent(DtlObjPtr const& value) { slot1_ = value; }
  /// Uncounted views of the slots, for walks that must not disturb the counts.
  DtlObj* carObj() const { return slot1_.get(); }
  DtlObj* cdrObj() const { return slot2_.get(); }
  DtlObj* procEnvObj() const { return slot3_.get(); }
  DtlObj* frameParentObj() const { return slot1_.get(); }

  /// Value word.
  char* pname() const { return value_.pname; }
  void setPname(char const* name);
  int fixnum() const { return value_.fixnum; }
  void setFixnum(int value) { value_.fixnum = value; }
  double flonum() const { return value_.flonum; }
  void setFlonum(double value) { value_.flonum = value; }
  char* string() const { return value_.string; }
  void setString(char const* text);
  void* nodeptr() const { return value_.nodeptr; }
  void setNodeptr(void* pointer) { value_.nodeptr = pointer; }
  char* fcnPname() const { return value_.fcnPname; }
  void setFcnPname(char const* name);
  DtlHashTable* frameBindings() const { return value_.frameBindings; }
  void setFrameBindings(DtlHashTable* table) { value_.frameBindings = table; }

  /// Function word.
  DtlPrimitive fcnCode() const { return function_.fcnCode; }
  void setFcnCode(DtlPrimitive code) { function_.fcnCode = code; }

  /// The registered host parameters of a frame, made on first demand; null for other kinds.
  DtList* params();
  /// Hands a parameter to a frame's list (1); anything else warns and answers 0.
  int registerVal(DtcParam* param);

  void DtcObjFprint(FILE* file);
  void DtcPrintList(FILE* file);
  void print();

 private:
  friend void DecObjRefCnt(DtlObj* obj) noexcept;

  DtlTagType tag_;
  int32_t refcnt_;
  char gone_;
  DtlObjPtr slot1_;
  DtlObjPtr slot2_;
  DtlObjPtr slot3_;
  union {
    char* pname;
    int fixnum;
    double flonum;
    char* string;
    void* nodeptr;
    char* fcnPname;
    DtlHashTable* frameBindings;
  } value_;
  union {
    DtlPrimitive fcnCode;
    DtList* params;
  } function_;
};

/// Prints on standard output, ends the line on DtInfo, and returns its argument.
DtlObjPtr DtcPrint(DtlObjPtr const& x);

/// The primitive mem: memory accounting is not built in.
DtlObjPtr DtlMem(DtlObjPtr const& args, DtlObjPtr const& env);

}  // namespace KORRti

KTL_API_END

#endif
