#include <util/dtList.h>

namespace KORRti {

DtList::~DtList() {
  while (first_) remove(first_);
}

DtListItem* DtList::addAfter(void* data, DtListItem* item) {
  DtListItem* added = new DtListItem(data);
  if (!item) {
    added->next_ = first_;
    if (first_) first_->previous_ = added;
    first_ = added;
    if (!last_) last_ = added;
  } else {
    added->previous_ = item;
    added->next_ = item->next_;
    if (item->next_) item->next_->previous_ = added;
    item->next_ = added;
    if (last_ == item) last_ = added;
  }
  return added;
}

void DtList::remove(DtListItem* item) {
  if (!item) return;
  if (item->previous_) item->previous_->next_ = item->next_;
  if (item->next_) item->next_->previous_ = item->previous_;
  if (first_ == item) first_ = item->next_;
  if (last_ == item) last_ = item->previous_;
  delete item;
}

int DtList::count() const {
  int n = 0;
  for (DtListItem* item = first_; item; item = item->next()) ++n;
  return n;
}

}  // namespace KORRti
