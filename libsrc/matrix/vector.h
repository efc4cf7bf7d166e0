#ifndef MATRIX_VECTOR_H
#define MATRIX_VECTOR_H

#include <util/export.h>

KTL_API_BEGIN

namespace KORRti {

/// Three components of one type, read by name or by index 0 to 2.
template <typename T>
class DtVectorT {
 public:
  DtVectorT() : v_{T(), T(), T()} {}
  DtVectorT(const T& x, const T& y, const T& z) : v_{x, y, z} {}

  const T& x() const { return v_[0]; }
  const T& y() const { return v_[1]; }
  const T& z() const { return v_[2]; }
  T& x() { return v_[0]; }
  T& y() { return v_[1]; }
  T& z() { return v_[2]; }
  const T& operator[](int index) const { return v_[index]; }
  T& operator[](int index) { return v_[index]; }

  bool operator==(const DtVectorT& other) const {
    return v_[0] == other.v_[0] && v_[1] == other.v_[1] && v_[2] == other.v_[2];
  }
  bool operator!=(const DtVectorT& other) const { return !(*this == other); }

 private:
  T v_[3];
};

class DtVector64 : public DtVectorT<double> {
 public:
  DtVector64();
  DtVector64(const double& x, const double& y, const double& z);
};

}  // namespace KORRti

KTL_API_END

#endif
