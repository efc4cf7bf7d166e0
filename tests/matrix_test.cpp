// DtVectorT<T>, DtVector64 and DtTaitBryan: plain values of three numbers.

#include <gtest/gtest.h>

#include <type_traits>
#include <vector>

#include <matrix/matrix.h>

using KORRti::DtTaitBryan;
using KORRti::DtVector64;
using KORRti::DtVectorT;

namespace {

// ---------------------------------------------------------------------------------------------
// DtVectorT<T>

TEST(DtVectorTTest, DefaultIsZero) {
  DtVectorT<double> v;
  EXPECT_EQ(v.x(), 0.0);
  EXPECT_EQ(v.y(), 0.0);
  EXPECT_EQ(v.z(), 0.0);
  DtVectorT<int> i;
  EXPECT_EQ(i.x(), 0);
  EXPECT_EQ(i.y(), 0);
  EXPECT_EQ(i.z(), 0);
}

TEST(DtVectorTTest, ConstructorSetsXYZInOrder) {
  DtVectorT<double> v(1.5, -2.25, 3e10);
  EXPECT_EQ(v.x(), 1.5);
  EXPECT_EQ(v.y(), -2.25);
  EXPECT_EQ(v.z(), 3e10);
}

TEST(DtVectorTTest, IndexMatchesNames) {
  const DtVectorT<double> v(4.0, 5.0, 6.0);
  EXPECT_EQ(v[0], v.x());
  EXPECT_EQ(v[1], v.y());
  EXPECT_EQ(v[2], v.z());
  EXPECT_EQ(v[0], 4.0);
  EXPECT_EQ(v[1], 5.0);
  EXPECT_EQ(v[2], 6.0);
}

TEST(DtVectorTTest, WritableByNameAndIndex) {
  DtVectorT<double> v;
  v.x() = 1.0;
  v.y() = 2.0;
  v.z() = 3.0;
  EXPECT_EQ(v, DtVectorT<double>(1.0, 2.0, 3.0));
  v[0] = 7.0;
  v[2] = 9.0;
  EXPECT_EQ(v.x(), 7.0);
  EXPECT_EQ(v.y(), 2.0);
  EXPECT_EQ(v.z(), 9.0);
}

TEST(DtVectorTTest, Equality) {
  DtVectorT<double> a(1, 2, 3);
  EXPECT_TRUE(a == DtVectorT<double>(1, 2, 3));
  EXPECT_FALSE(a != DtVectorT<double>(1, 2, 3));
  EXPECT_TRUE(a != DtVectorT<double>(0, 2, 3));
  EXPECT_TRUE(a != DtVectorT<double>(1, 0, 3));
  EXPECT_TRUE(a != DtVectorT<double>(1, 2, 0));
  EXPECT_FALSE(a == DtVectorT<double>(3, 2, 1));
}

TEST(DtVectorTTest, CopyIsIndependent) {
  DtVectorT<double> a(1, 2, 3);
  DtVectorT<double> b(a);
  b.x() = 10;
  EXPECT_EQ(a.x(), 1.0);
  EXPECT_EQ(b.x(), 10.0);
  DtVectorT<double> c;
  c = a;
  EXPECT_EQ(c, a);
  a[1] = 20;
  EXPECT_EQ(c.y(), 2.0);
}

TEST(DtVectorTTest, OtherComponentTypes) {
  DtVectorT<int> i(1, -2, 3);
  EXPECT_EQ(i.x(), 1);
  EXPECT_EQ(i.y(), -2);
  EXPECT_EQ(i[2], 3);
  DtVectorT<float> f(0.5f, 0.25f, 0.125f);
  EXPECT_EQ(f.y(), 0.25f);
  EXPECT_EQ(f[2], 0.125f);
}

TEST(DtVectorTTest, ThreeDoublesByValue) {
  static_assert(sizeof(DtVectorT<double>) == 3 * sizeof(double), "three doubles");
  static_assert(std::is_trivially_copyable<DtVectorT<double>>::value, "plain value");
  std::vector<DtVectorT<double>> values(2, DtVectorT<double>(1, 2, 3));
  values.push_back(DtVectorT<double>(4, 5, 6));
  EXPECT_EQ(values[1], DtVectorT<double>(1, 2, 3));
  EXPECT_EQ(values[2].z(), 6.0);
}

// ---------------------------------------------------------------------------------------------
// DtVector64

TEST(DtVector64Test, DerivesFromVectorOfDouble) {
  static_assert(std::is_base_of<DtVectorT<double>, DtVector64>::value, "derives");
  static_assert(sizeof(DtVector64) == 3 * sizeof(double), "three doubles");
  DtVector64 v(1.0, 2.0, 3.0);
  const DtVectorT<double>& base = v;
  EXPECT_EQ(base.x(), 1.0);
  EXPECT_EQ(base[1], 2.0);
  EXPECT_EQ(base.z(), 3.0);
}

TEST(DtVector64Test, DefaultIsZero) {
  DtVector64 v;
  EXPECT_EQ(v.x(), 0.0);
  EXPECT_EQ(v.y(), 0.0);
  EXPECT_EQ(v.z(), 0.0);
}

TEST(DtVector64Test, ConstructorTakesConstDoubleReferences) {
  const double x = 6378137.0;
  const double y = -0.001;
  const double z = 1e-300;
  DtVector64 v(x, y, z);
  EXPECT_EQ(v.x(), x);
  EXPECT_EQ(v.y(), y);
  EXPECT_EQ(v.z(), z);
  EXPECT_EQ(v[0], x);
  EXPECT_EQ(v[1], y);
  EXPECT_EQ(v[2], z);
}

TEST(DtVector64Test, ValueSemantics) {
  DtVector64 a(1, 2, 3);
  DtVector64 b = a;
  EXPECT_TRUE(a == b);
  b.z() = 4;
  EXPECT_TRUE(a != b);
  EXPECT_EQ(a.z(), 3.0);
  a = b;
  EXPECT_EQ(a.z(), 4.0);
  EXPECT_TRUE(a == DtVectorT<double>(1, 2, 4));
}

// ---------------------------------------------------------------------------------------------
// DtTaitBryan

TEST(DtTaitBryanTest, DefaultIsZero) {
  DtTaitBryan t;
  EXPECT_EQ(t.psi(), 0.0);
  EXPECT_EQ(t.theta(), 0.0);
  EXPECT_EQ(t.phi(), 0.0);
}

TEST(DtTaitBryanTest, ConstructorOrderIsPsiThetaPhi) {
  DtTaitBryan t(0.1, 0.2, 0.3);
  EXPECT_EQ(t.psi(), 0.1);
  EXPECT_EQ(t.theta(), 0.2);
  EXPECT_EQ(t.phi(), 0.3);
}

TEST(DtTaitBryanTest, ConstructorTakesConstDoubleReferences) {
  const double psi = 3.141592653589793;
  const double theta = -1.5707963267948966;
  const double phi = 1e-9;
  DtTaitBryan t(psi, theta, phi);
  EXPECT_EQ(t.psi(), psi);
  EXPECT_EQ(t.theta(), theta);
  EXPECT_EQ(t.phi(), phi);
}

TEST(DtTaitBryanTest, Setters) {
  DtTaitBryan t;
  t.setPsi(1.0);
  t.setTheta(2.0);
  t.setPhi(3.0);
  EXPECT_EQ(t.psi(), 1.0);
  EXPECT_EQ(t.theta(), 2.0);
  EXPECT_EQ(t.phi(), 3.0);
  EXPECT_EQ(t, DtTaitBryan(1.0, 2.0, 3.0));
}

TEST(DtTaitBryanTest, Equality) {
  DtTaitBryan a(1, 2, 3);
  EXPECT_TRUE(a == DtTaitBryan(1, 2, 3));
  EXPECT_FALSE(a != DtTaitBryan(1, 2, 3));
  EXPECT_TRUE(a != DtTaitBryan(0, 2, 3));
  EXPECT_TRUE(a != DtTaitBryan(1, 0, 3));
  EXPECT_TRUE(a != DtTaitBryan(1, 2, 0));
  EXPECT_TRUE(a != DtTaitBryan(3, 2, 1));
}

TEST(DtTaitBryanTest, ThreeDoublesByValue) {
  static_assert(sizeof(DtTaitBryan) == 3 * sizeof(double), "three doubles");
  static_assert(std::is_trivially_copyable<DtTaitBryan>::value, "plain value");
  DtTaitBryan a(0.5, 0.25, 0.125);
  DtTaitBryan b(a);
  b.setPhi(9);
  EXPECT_EQ(a.phi(), 0.125);
  EXPECT_EQ(b.phi(), 9.0);
  EXPECT_EQ(b.psi(), 0.5);
  a = b;
  EXPECT_EQ(a, b);
}

}  // namespace
