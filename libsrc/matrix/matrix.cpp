#include <matrix/taitBryan.h>
#include <matrix/vector.h>

namespace KORRti {

DtVector64::DtVector64() = default;
DtVector64::DtVector64(const double& x, const double& y, const double& z)
    : DtVectorT<double>(x, y, z) {}

DtTaitBryan::DtTaitBryan() : psi_(0.0), theta_(0.0), phi_(0.0) {}
DtTaitBryan::DtTaitBryan(const double& psi, const double& theta, const double& phi)
    : psi_(psi), theta_(theta), phi_(phi) {}

}  // namespace KORRti
