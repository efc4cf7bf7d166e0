#ifndef UTIL_DTLIST_H
#define UTIL_DTLIST_H

#include <util/export.h>

KTL_API_BEGIN

namespace KORRti {

class DtList;

class DtListItem {
 public:
  DtListItem* next() const { return next_; }
  DtListItem* previous() const { return previous_; }
  void* data() const { return data_; }

 private:
  friend class DtList;
  explicit DtListItem(void* data) : data_(data) {}
  DtListItem* previous_ = nullptr;
  DtListItem* next_ = nullptr;
  void* data_;
};

/// Doubly linked list of untyped pointers. It owns its items, never the data.
class DtList {
 public:
  DtList() = default;
  DtList(const DtList&) = delete;
  DtList& operator=(const DtList&) = delete;
  ~DtList();

  /// Appends at the end.
  DtListItem* add(void* data) { return addAfter(data, last_); }
  /// A new item behind item, or at the head when item is null.
  DtListItem* addAfter(void* data, DtListItem* item);
  /// Unlinks and frees the item, leaving its data alone.
  void remove(DtListItem* item);
  DtListItem* first() const { return first_; }
  DtListItem* last() const { return last_; }
  int count() const;

 private:
  DtListItem* first_ = nullptr;
  DtListItem* last_ = nullptr;
};

}  // namespace KORRti

KTL_API_END

#endif
