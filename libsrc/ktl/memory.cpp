#include <ktl/memory.h>

#include <cstdint>
#include <cstring>
#include <new>
#include <vector>

#include <ktl/eval.h>
#include <ktl/io.h>
#include <ktl/lenv.h>
#include <ktl/register.h>
#include <util/dtList.h>
#include <util/notify.h>

namespace KORRti {

thread_local DtlObjPtr* theNilPtr = nullptr;
thread_local DtlObjPtr* theTPtr = nullptr;
thread_local DtlObjPtr* theUnboundPtr = nullptr;

namespace {

// A private copy of text in array storage, or null when memory ran out.
char* copyText(char const* text) {
  size_t length = std::strlen(text) + 1;
  char* copy = new (std::nothrow) char[length];
  if (copy) std::memcpy(copy, text, length);
  return copy;
}

DtlObj* allocate(DtlTagType tag) {
  return new (std::nothrow) DtlObj(tag);
}

}  // namespace

// ---- handles ---------------------------------------------------------------------------

DtlObjPtr::DtlObjPtr(DtlTagType tag) : ptr_(allocate(tag)) {
  IncObjRefCnt(ptr_);
}
DtlObjPtr::DtlObjPtr(int fixnum) : ptr_(new (std::nothrow) DtlObj(fixnum)) {
  IncObjRefCnt(ptr_);
}
DtlObjPtr::DtlObjPtr(double flonum) : ptr_(new (std::nothrow) DtlObj(flonum)) {
  IncObjRefCnt(ptr_);
}
DtlObjPtr::DtlObjPtr(char const* string) : ptr_(new (std::nothrow) DtlObj(string)) {
  IncObjRefCnt(ptr_);
}

DtlNilObjPtr::DtlNilObjPtr() : DtlObjPtr(DtlNilTag) {}

DtlObjTPtr::DtlObjTPtr() : DtlObjPtr(DtlSymbolTag) {
  if (!isNull()) get()->setPname("t");
}

DtlObjUnboundPtr::DtlObjUnboundPtr() : DtlObjPtr(DtlSymbolTag) {
  if (!isNull()) get()->setPname("*unbound*");
}

namespace {

// Gives up a thread's singleton handles when the thread ends. A record still referenced from
// elsewhere lives on until its last handle goes.
struct SingletonReaper {
  ~SingletonReaper() {
    delete theNilPtr;
    delete theTPtr;
    delete theUnboundPtr;
    theNilPtr = theTPtr = theUnboundPtr = nullptr;
  }
};

void reapAtThreadExit() {
  static thread_local SingletonReaper reaper;
  (void)reaper;
}

template <typename Handle>
DtlObjPtr const& singleton(DtlObjPtr*& slot, char const* failure) {
  if (!slot) {
    reapAtThreadExit();
    Handle* made = new Handle();
    if (made->isNull()) {
      delete made;  // never keep a null singleton: the next call tries again
      DtcHaltAndCatchFire(failure);
    }
    slot = made;
  }
  return *slot;
}

}  // namespace

DtlObjPtr const& DtlObjPtr::nil() {
  return singleton<DtlNilObjPtr>(theNilPtr, "out of memory in DtlObjPtr::nil()");
}
DtlObjPtr const& DtlObjPtr::t() {
  return singleton<DtlObjTPtr>(theTPtr, "out of memory in DtlObjPtr::t()");
}
DtlObjPtr const& DtlObjPtr::unbound() {
  return singleton<DtlObjUnboundPtr>(theUnboundPtr, "out of memory in DtlObjPtr::unbound()");
}

// ---- counting --------------------------------------------------------------------------

void IncObjRefCnt(DtlObj* obj) {
  if (obj) obj->setRefcnt(obj->refcnt() + 1);
}

// A frame whose every remaining reference comes from closures bound in it, and held by nothing
// else, is unreachable. The count of procedures bound in it is a cheap bound that spares most
// releases the scan of its table.
static bool heldOnlyByOwnClosures(DtlObj* frame) {
  int count = frame->refcnt();
  if (count <= 0 || count > frame->frameBindings()->procedureBindings()) return false;
  return count == EnvLocalProcRefcnt(frame);
}

// Steps 1 to 5 of a release: the record that must now be destroyed, or null. That is the
// object itself, or a frame that this release left held only by its own closures. Such a
// frame's count is set to -1 to guard its teardown: the closures' releases of their frame then
// run the count further down and never reach 0 again.
static DtlObj* releaseReference(DtlObj* obj) {
  if (!obj) return nullptr;
  obj->setRefcnt(obj->refcnt() - 1);
  if (obj->refcnt() == 0) return obj;
  DtlObj* frame = nullptr;
  if (obj->tag() == DtlFrameTag) {
    frame = obj;
  } else if (obj->tag() == DtlProcedureTag && obj->refcnt() == 1) {
    // A closure down to its last holder, which may be the binding in its own frame: the frame
    // can have just lost its last outside reference through this closure.
    frame = obj->procEnvObj();
    if (frame && frame->tag() != DtlFrameTag) frame = nullptr;
  }
  if (!frame || !heldOnlyByOwnClosures(frame)) return nullptr;
  frame->setRefcnt(-1);
  return frame;
}

namespace {

// The objects still to be released, last in first out. Most releases need only a few places,
// so they are kept on the host stack; a long list's pending cars spill to the heap.
class ReleaseStack {
 public:
  void push(DtlObj* obj) {
    if (!obj) return;
    if (size_ < kLocal) {
      local_[size_++] = obj;
    } else {
      spill_.push_back(obj);
    }
  }
  bool empty() const { return size_ == 0 && spill_.empty(); }
  DtlObj* pop() {
    // The spill holds the newest entries: it only grows while the local part is full.
    if (!spill_.empty()) {
      DtlObj* obj = spill_.back();
      spill_.pop_back();
      return obj;
    }
    return local_[--size_];
  }

 private:
  static const size_t kLocal = 64;
  DtlObj* local_[kLocal];
  size_t size_ = 0;
  std::vector<DtlObj*> spill_;
};

}  // namespace

void DecObjRefCnt(DtlObj* obj) noexcept {
  DtlObj* first = releaseReference(obj);
  if (!first) return;
  // Destroy without recursion on the slots, so that a list of any length can be freed. The
  // slots go on a stack, third slot on top, so they are released third to first, each with
  // all that it frees in turn, just as a recursive release would.
  ReleaseStack pending;
  for (DtlObj* dying = first;;) {
    pending.push(dying->slot1_.detach());
    pending.push(dying->slot2_.detach());
    pending.push(dying->slot3_.detach());
    delete dying;
    dying = nullptr;
    while (!pending.empty() && !dying) {
      dying = releaseReference(pending.pop());
    }
    if (!dying) return;
  }
}

// ---- records ---------------------------------------------------------------------------

DtlObj::DtlObj(DtlTagType tag) {
  value_.nodeptr = nullptr;
  function_.params = nullptr;
  switch (tag) {
    case DtlSymbolTag:
      setPname(nullptr);
      break;
    case DtlStringTag:
      setString(nullptr);
      break;
    case DtlFrameTag:
      value_.frameBindings = DtlHashTable::acquire();
      if (!value_.frameBindings) DtcHaltAndCatchFire("out of memory in DtlObj::DtlObj(DtlTagType)");
      function_.params = nullptr;
      break;
    case DtlNilTag:
    case DtlFixnumTag:
    case DtlFlonumTag:
    case DtlConsTag:
    case DtlSpecialFormTag:
    case DtlCompiledCTag:
    case DtlLocativeTag:
    case DtlProcedureTag:
      break;
    default:
      DtcHaltAndCatchFire("unknown tag request to DtlObj::DtlObj(DtlTagType)");
  }
  tag_ = tag;
  refcnt_ = 0;
  gone_ = 0;
}

DtlObj::DtlObj(int fixnum) : tag_(DtlFixnumTag), refcnt_(0), gone_(0) {
  function_.params = nullptr;
  value_.fixnum = fixnum;
}

DtlObj::DtlObj(double flonum) : tag_(DtlFlonumTag), refcnt_(0), gone_(0) {
  function_.params = nullptr;
  value_.flonum = flonum;
}

DtlObj::DtlObj(char const* string) : tag_(DtlStringTag), refcnt_(0), gone_(0) {
  function_.params = nullptr;
  value_.string = nullptr;
  setString(string);
}

DtlObj::~DtlObj() {
  if (!gone_) {
    switch (tag_) {
      case DtlSymbolTag:
      case DtlSpecialFormTag:
      case DtlCompiledCTag:
      case DtlStringTag:
        delete[] value_.pname;  // pname, fcnPname and string share the word
        break;
      case DtlFrameTag:
        if (function_.params) {
          DtcEmptyParamList(function_.params);
          delete function_.params;
          function_.params = nullptr;
        }
        DtlHashTable::release(value_.frameBindings);
        break;
      default:
        break;
    }
    gone_ = 1;
  } else {
    DtWarn << "Lisp Error: Attempt to deleted already-deleted object\n";
  }
  // The slots release themselves, third to first, as members are destroyed in reverse order.
}

void DtlObj::setPname(char const* name) {
  if (!name) {
    value_.pname = nullptr;
    return;
  }
  value_.pname = copyText(name);
  if (!value_.pname) DtcHaltAndCatchFire("out of memory in DtlObj::setPname()");
}

void DtlObj::setFcnPname(char const* name) {
  if (!name) {
    value_.fcnPname = nullptr;
    return;
  }
  value_.fcnPname = copyText(name);
  if (!value_.fcnPname) DtcHaltAndCatchFire("out of memory in DtlObj::setFcnPname()");
}

void DtlObj::setString(char const* text) {
  if (!text) {
    value_.string = nullptr;
    return;
  }
  delete[] value_.string;
  value_.string = copyText(text);
  if (!value_.string) DtcHaltAndCatchFire("out of memory in DtlObj::setString()");
}

DtList* DtlObj::params() {
  if (tag_ != DtlFrameTag) return nullptr;
  if (!function_.params) function_.params = new DtList();
  return function_.params;
}

int DtlObj::registerVal(DtcParam* param) {
  if (tag_ != DtlFrameTag) {
    DtWarn << "Can't register a parameter with a non-frame DtlObj.\n";
    return 0;
  }
  params()->add(param);
  return 1;
}

// ---- printing --------------------------------------------------------------------------

namespace {

// Writes an object that is not a cons, and flushes.
void printAtom(DtlObj* obj, FILE* file) {
  if (obj->gone()) std::fputs("#deleted# ", file);
  switch (obj->tag()) {
    case DtlNilTag:
      std::fputs("nil", file);
      break;
    case DtlSymbolTag:
      std::fputs(obj->pname() ? obj->pname() : "(unbound symbol name)", file);
      break;
    case DtlFixnumTag:
      std::fprintf(file, "%d", obj->fixnum());
      break;
    case DtlFlonumTag:
      std::fprintf(file, "%f", obj->flonum());
      break;
    case DtlSpecialFormTag:
      std::fprintf(file, "#<special-form %lx>", reinterpret_cast<unsigned long>(obj));
      break;
    case DtlCompiledCTag:
      std::fprintf(file, "#<primitive-function %s>", obj->fcnPname() ? obj->fcnPname() : "");
      break;
    case DtlStringTag:
      if (obj->string()) {
        std::fprintf(file, "\"%s\"", obj->string());
      } else {
        std::fputs("(unbound string)", file);
      }
      break;
    case DtlLocativeTag:
      // Shown as an int: the low bits of the address.
      std::fprintf(
          file, "%d",
          static_cast<int>(static_cast<uint32_t>(reinterpret_cast<uintptr_t>(obj->nodeptr()))));
      break;
    case DtlProcedureTag:
      std::fprintf(file, "#<procedure %lx>", reinterpret_cast<unsigned long>(obj));
      break;
    case DtlFrameTag:
      std::fprintf(file, "#<environment-frame %lx>", reinterpret_cast<unsigned long>(obj));
      break;
    default:
      DtcHaltAndCatchFire("unknown tag in DtlObj::DtcObjFprint");
  }
  std::fflush(file);
}

// Prints lists with a stack of the cells whose element is being printed, so that neither the
// length nor the nesting of a list costs host stack. The output is that of the recursive
// printer: "(", the elements with blanks, " . " before a non-list tail, ")", and "?" and " ?"
// on DtInfo for null handles.
class ListPrinter {
 public:
  explicit ListPrinter(FILE* file) : file_(file) {}

  // Prints obj whole; with insideOnly, obj is a cons and its parentheses are left out.
  void run(DtlObj* obj, bool insideOnly) {
    DtlObj* next = obj;
    if (insideOnly) {
      open_.push_back(obj);
      outermostBare_ = true;
      next = firstElement(obj);
    }
    for (;;) {
      while (next) {
        if (next->tag() != DtlConsTag) {
          printAtom(next, file_);
          break;
        }
        if (next->gone()) std::fputs("#deleted# ", file_);
        std::fputs("(", file_);
        open_.push_back(next);
        next = firstElement(next);
      }
      next = resume();
      if (open_.empty() && !next) return;
    }
  }

 private:
  // The car of a cell to print next, or null after writing "?" for a null car.
  DtlObj* firstElement(DtlObj* cell) {
    DtlObj* car = cell->carObj();
    if (!car) DtInfo << "?";
    return car;
  }

  // After an element: moves along the innermost open list, closing lists that end. Answers
  // the next element to print, or null when everything is printed.
  DtlObj* resume() {
    while (!open_.empty()) {
      DtlObj* rest = open_.back()->cdrObj();
      if (!rest) {
        DtInfo << " ?";
        close();
        continue;
      }
      if (rest->tag() == DtlConsTag) {
        std::fputs(" ", file_);
        open_.back() = rest;
        DtlObj* element = firstElement(rest);
        if (element) return element;
        continue;
      }
      if (rest->tag() != DtlNilTag) {
        std::fputs(" . ", file_);
        printAtom(rest, file_);
      }
      close();
    }
    return nullptr;
  }

  void close() {
    open_.pop_back();
    if (open_.empty() && outermostBare_) return;
    std::fputs(")", file_);
    std::fflush(file_);
  }

  FILE* file_;
  std::vector<DtlObj*> open_;
  bool outermostBare_ = false;
};

}  // namespace

void DtlObj::DtcObjFprint(FILE* file) {
  ListPrinter(file).run(this, false);
}

void DtlObj::DtcPrintList(FILE* file) {
  if (tag_ != DtlConsTag) DtcHaltAndCatchFire("Non-cons passed to DtlObj::DtcPrintList");
  ListPrinter(file).run(this, true);
}

void DtlObj::print() {
  DtcObjFprint(stdout);
  DtInfo << "\n";
}

DtlObjPtr DtcPrint(DtlObjPtr const& x) {
  if (x.isNull()) {
    DtInfo << "\n";
  } else {
    x->print();
  }
  return x;
}

DtlObjPtr DtlMem(DtlObjPtr const&, DtlObjPtr const&) {
  DtInfo << "Must compile with -DMEMCHK=1 to use mem or DtlMem.\n";
  return DtlObjPtr::nil();
}

}  // namespace KORRti
