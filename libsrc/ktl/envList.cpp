#include <ktl/envList.h>

#include <cstddef>
#include <iterator>
#include <memory>
#include <utility>
#include <vector>

namespace KORRti {

DtEnvList::DtEnvList(const DtString& value) : DtEnvValue(value) {
  addFormat(DtEnvListFormat);
}

DtEnvList::~DtEnvList() {
  // Take the subtree down without recursion, so that a deep tree can't exhaust the stack: the
  // children of every node about to die are moved out before it goes.
  std::vector<DtEnvValueSP> pending(std::make_move_iterator(children_.begin()),
                                    std::make_move_iterator(children_.end()));
  children_.clear();
  while (!pending.empty()) {
    DtEnvValueSP node = std::move(pending.back());
    pending.pop_back();
    if (node.use_count() == 1) {
      if (auto* list = dynamic_cast<DtEnvList*>(node.get())) {
        for (auto& child : list->children_) pending.push_back(std::move(child));
        list->children_.clear();
        list->hidden_ = 0;
      }
    }
  }
}

DtEnvValue* DtEnvList::clone() const {
  std::unique_ptr<DtEnvList> copy(new DtEnvList(value()));
  cloneChildren(copy.get());
  return copy.release();
}

DtEnvValueSP DtEnvList::first() const {
  if (children_.empty()) return DtEnvValueSP();
  return children_.front();
}

DtEnvValueSP DtEnvList::last() const {
  if (children_.empty()) return DtEnvValueSP();
  return children_.back();
}

DtEnvValueSP DtEnvList::next(DtEnvValueSP child) const {
  if (!child) return DtEnvValueSP();
  // Walks with first()/next() ask for the entry the previous call handed out: answer those from
  // the remembered position instead of scanning from the front, so that a walk stays linear.
  auto it = children_.end();
  if (cursorValid_ && *cursor_ == child) {
    it = cursor_;
  } else {
    for (auto scan = children_.begin(); scan != children_.end(); ++scan) {
      if (*scan == child) {
        it = scan;
        break;
      }
    }
    if (it == children_.end()) return DtEnvValueSP();
  }
  ++it;
  if (it == children_.end()) {
    cursorValid_ = false;
    return DtEnvValueSP();
  }
  cursor_ = it;
  cursorValid_ = true;
  return *it;
}

void DtEnvList::cloneChildren(DtEnvList* target) const {
  if (!target) return;
  for (DtEnvValueSP c = first(); c; c = next(c)) target->append(DtEnvValueSP(c->clone()));
}

void DtEnvList::append(DtEnvValueSP child) {
  if (!child || child.get() == this) return;
  children_.push_back(std::move(child));
}

void DtEnvList::remove(DtEnvValueSP child) {
  if (!child) return;
  int index = 0;
  for (auto it = children_.begin(); it != children_.end(); ++it, ++index) {
    if (*it == child) {
      if (index >= hidden_) {
        if (cursorValid_ && cursor_ == it) cursorValid_ = false;
        children_.erase(it);
      }
      return;
    }
  }
}

bool DtEnvList::isList(const DtEnvValueSP& node) {
  return node && (node->format() & DtEnvListFormat) != 0;
}

DtEnvList* DtEnvList::castToList(const DtEnvValueSP& node) {
  if (!isList(node)) return nullptr;
  return dynamic_cast<DtEnvList*>(node.get());
}

void DtEnvList::appendHolder(const DtString& text) {
  // Holders stand at the front; they are only made by constructors, before any other child.
  children_.push_back(std::make_shared<DtEnvValue>(text));
  ++hidden_;
}

DtEnvValue* DtEnvList::holder(int index) const {
  if (index < 0 || index >= hidden_ || static_cast<std::size_t>(index) >= children_.size())
    return nullptr;
  auto it = children_.begin();
  std::advance(it, index);
  return it->get();
}

}  // namespace KORRti
