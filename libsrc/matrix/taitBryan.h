#ifndef MATRIX_TAITBRYAN_H
#define MATRIX_TAITBRYAN_H

#include <util/export.h>

KTL_API_BEGIN

namespace KORRti {

/// Tait-Bryan angles: psi (heading), theta (pitch), phi (roll), in that order.
class DtTaitBryan {
 public:
  DtTaitBryan();
  DtTaitBryan(const double& psi, const double& theta, const double& phi);

  double psi() const { return psi_; }
  double theta() const { return theta_; }
  double phi() const { return phi_; }
  void setPsi(double value) { psi_ = value; }
  void setTheta(double value) { theta_ = value; }
  void setPhi(double value) { phi_ = value; }

  bool operator==(const DtTaitBryan& other) const {
    return psi_ == other.psi_ && theta_ == other.theta_ && phi_ == other.phi_;
  }
  bool operator!=(const DtTaitBryan& other) const { return !(*this == other); }

 private:
  double psi_;
  double theta_;
  double phi_;
};

}  // namespace KORRti

KTL_API_END

#endif
