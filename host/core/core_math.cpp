// Host library: vector and matrix arithmetic.
//
// Conventions:
//   * vectors are column vectors; a matrix M transforms a point p as M * p,
//     so the translation lives in column 3 (m[0][3], m[1][3], m[2][3]) and
//     the bottom row of a rigid transform is 0 0 0 1;
//   * m[row][col];
//   * angles are in radians, positive angles turn counter-clockwise about the
//     axis when looking down it towards the origin (right-hand rule);
//   * axes are numbered 0 = x, 1 = y, 2 = z; a bad axis number leaves a
//     matrix unchanged and reads as a zero vector;
//   * "fixed-axis x-y-z angles" (a, b, c) mean R = Rz(c) * Ry(b) * Rx(a):
//     rotate about the fixed x axis first, then y, then z;
//   * getRot(order) generalises that: for the order "ijk" the rotation is
//     R = Rk * Rj * Ri, and the answer still holds the angle about x in
//     component 0, about y in 1 and about z in 2;
//   * setRotation, fromAxisAngle and the rotate* operations touch only what
//     they say: setRotation and fromAxisAngle replace the upper-left 3x3 and
//     keep the translation column and bottom row;
//   * arithmetic is carried out in double and stored as float.
#include <cmath>
#include <cstdio>
#include <string>

#include "host/core.h"
#include "core/journal.h"

namespace {

using Mat = double[4][4];

std::string text(const hVector &v) {
  char buf[96];
  std::snprintf(buf, sizeof buf, "{%g %g %g}", v.v[0], v.v[1], v.v[2]);
  return buf;
}

std::string text(const hMatrix &m) {
  std::string out = "{";
  char buf[32];
  for (int r = 0; r < 4; ++r)
    for (int c = 0; c < 4; ++c) {
      std::snprintf(buf, sizeof buf, r + c == 0 ? "%g" : " %g", m.m[r][c]);
      out += buf;
    }
  return out + "}";
}

void load(const hMatrix &src, Mat dst) {
  for (int r = 0; r < 4; ++r)
    for (int c = 0; c < 4; ++c) dst[r][c] = src.m[r][c];
}

void store(const Mat src, hMatrix &dst) {
  for (int r = 0; r < 4; ++r)
    for (int c = 0; c < 4; ++c) dst.m[r][c] = static_cast<float>(src[r][c]);
}

// out = a * b (out may alias neither).
void product(const Mat a, const Mat b, Mat out) {
  for (int r = 0; r < 4; ++r)
    for (int c = 0; c < 4; ++c) {
      double s = 0;
      for (int k = 0; k < 4; ++k) s += a[r][k] * b[k][c];
      out[r][c] = s;
    }
}

// this = this * a.
void multiplyRight(hMatrix &self, const hMatrix &a) {
  Mat x, y, out;
  load(self, x);
  load(a, y);
  product(x, y, out);
  store(out, self);
}

void identity(Mat m) {
  for (int r = 0; r < 4; ++r)
    for (int c = 0; c < 4; ++c) m[r][c] = r == c;
}

// 4x4 rotation about a principal axis; false for a bad axis.
bool axisRotation(int ax, double angle, Mat out) {
  if (ax < 0 || ax > 2) return false;
  identity(out);
  const double c = std::cos(angle), s = std::sin(angle);
  const int i = (ax + 1) % 3, j = (ax + 2) % 3;  // the plane turned
  out[i][i] = c;
  out[i][j] = -s;
  out[j][i] = s;
  out[j][j] = c;
  return true;
}

// 4x4 rotation about a unit axis (Rodrigues' formula).
void unitAxisRotation(const double n[3], double theta, Mat out) {
  identity(out);
  const double c = std::cos(theta), s = std::sin(theta), t = 1 - c;
  const double x = n[0], y = n[1], z = n[2];
  out[0][0] = c + t * x * x;
  out[0][1] = t * x * y - s * z;
  out[0][2] = t * x * z + s * y;
  out[1][0] = t * x * y + s * z;
  out[1][1] = c + t * y * y;
  out[1][2] = t * y * z - s * x;
  out[2][0] = t * x * z - s * y;
  out[2][1] = t * y * z + s * x;
  out[2][2] = c + t * z * z;
}

// Normalises v into n; false for a (near) zero vector.
bool unit(const hVector &v, double n[3]) {
  const double l = std::sqrt(double(v.v[0]) * v.v[0] + double(v.v[1]) * v.v[1] +
                             double(v.v[2]) * v.v[2]);
  if (l < 1e-12) return false;
  for (int i = 0; i < 3; ++i) n[i] = v.v[i] / l;
  return true;
}

// Fixed-axis x-y-z angles of the rotation R = Rz(c) Ry(b) Rx(a) held in the
// upper-left 3x3 of r.  Insensitive to a uniform scale.
void xyzAngles(const double r[3][3], double out[3]) {
  const double cb = std::sqrt(r[0][0] * r[0][0] + r[1][0] * r[1][0]);
  out[1] = std::atan2(-r[2][0], cb);
  if (cb > 1e-6 * std::fabs(r[2][0])) {
    out[0] = std::atan2(r[2][1], r[2][2]);
    out[2] = std::atan2(r[1][0], r[0][0]);
  } else {
    // Gimbal lock: only a + c (or a - c) is defined; put it all in a.
    out[0] = std::atan2(-r[1][2], r[1][1]);
    out[2] = 0;
  }
}

// Parses an axis order such as "xyz" or "ZYX"; false unless it names each
// axis once.
bool parseOrder(const char *order, int perm[3]) {
  if (!order) return false;
  int seen = 0, n = 0;
  for (const char *p = order; *p; ++p, ++n) {
    if (n == 3) return false;
    int ax;
    switch (*p) {
      case 'x': case 'X': ax = 0; break;
      case 'y': case 'Y': ax = 1; break;
      case 'z': case 'Z': ax = 2; break;
      default: return false;
    }
    if (seen & (1 << ax)) return false;
    seen |= 1 << ax;
    perm[n] = ax;
  }
  return n == 3;
}

bool close(float a, float b) {
  const float scale = std::fmax(1.0f, std::fmax(std::fabs(a), std::fabs(b)));
  return std::fabs(a - b) <= 1e-6f * scale;
}

}  // namespace

// ---------------------------------------------------------------------------
// hVector

hVector::hVector() : v{0, 0, 0} {}

hVector::hVector(float x, float y, float z) : v{x, y, z} {}

void hVector::copy(hVector &V) {
  hccore::call("hVector::copy", text(V).c_str());
  for (int i = 0; i < 3; ++i) v[i] = V.v[i];
}

float hVector::get(int index) {
  hccore::call("hVector::get", index);
  return index >= 0 && index < 3 ? v[index] : 0.0f;
}

int hVector::set(int index, float val) {
  hccore::call("hVector::set", index, val);
  if (index < 0 || index > 2) return 0;
  v[index] = val;
  return 1;
}

int hVector::sub(hVector &a) {
  hccore::call("hVector::sub", text(a).c_str());
  for (int i = 0; i < 3; ++i) v[i] -= a.v[i];
  return 1;
}

int hVector::add(hVector &a) {
  hccore::call("hVector::add", text(a).c_str());
  for (int i = 0; i < 3; ++i) v[i] += a.v[i];
  return 1;
}

float hVector::mag() {
  hccore::call("hVector::mag");
  return static_cast<float>(std::sqrt(double(v[0]) * v[0] + double(v[1]) * v[1] +
                                      double(v[2]) * v[2]));
}

float hVector::dotProd(hVector &a) {
  hccore::call("hVector::dotProd", text(a).c_str());
  return static_cast<float>(double(v[0]) * a.v[0] + double(v[1]) * a.v[1] +
                            double(v[2]) * a.v[2]);
}

void hVector::cross(hVector vect) {
  hccore::call("hVector::cross", text(vect).c_str());
  const double x = double(v[1]) * vect.v[2] - double(v[2]) * vect.v[1];
  const double y = double(v[2]) * vect.v[0] - double(v[0]) * vect.v[2];
  const double z = double(v[0]) * vect.v[1] - double(v[1]) * vect.v[0];
  v[0] = static_cast<float>(x);
  v[1] = static_cast<float>(y);
  v[2] = static_cast<float>(z);
}

void hVector::normalize() {
  hccore::call("hVector::normalize");
  double n[3];
  if (!unit(*this, n)) return;
  for (int i = 0; i < 3; ++i) v[i] = static_cast<float>(n[i]);
}

void hVector::xform(hMatrix mat) {
  hccore::call("hVector::xform", text(mat).c_str());
  double out[4];
  for (int r = 0; r < 4; ++r)
    out[r] = double(mat.m[r][0]) * v[0] + double(mat.m[r][1]) * v[1] +
             double(mat.m[r][2]) * v[2] + mat.m[r][3];
  // A projective matrix leaves a homogeneous weight to divide by.
  const double w = out[3] != 0 ? out[3] : 1;
  for (int i = 0; i < 3; ++i) v[i] = static_cast<float>(out[i] / w);
}

void hVector::scale(float n) {
  hccore::call("hVector::scale", n);
  for (float &c : v) c *= n;
}

float hVector::rise() {
  hccore::call("hVector::rise");
  return v[2];
}

float hVector::run() {
  hccore::call("hVector::run");
  return static_cast<float>(std::hypot(double(v[0]), double(v[1])));
}

hVector hVector::horizontal() {
  hccore::call("hVector::horizontal");
  return hVector(v[0], v[1], 0);
}

float hVector::angle(hVector &other) {
  hccore::call("hVector::angle", text(other).c_str());
  double a[3], b[3];
  if (!unit(*this, a) || !unit(other, b)) return 0;
  // atan2 of |a x b| and a . b stays accurate near 0 and pi.
  const double cx = a[1] * b[2] - a[2] * b[1];
  const double cy = a[2] * b[0] - a[0] * b[2];
  const double cz = a[0] * b[1] - a[1] * b[0];
  const double d = a[0] * b[0] + a[1] * b[1] + a[2] * b[2];
  return static_cast<float>(std::atan2(std::sqrt(cx * cx + cy * cy + cz * cz), d));
}

int operator==(const hVector &a, const hVector &b) {
  hccore::call("hVector::operator==", text(a).c_str(), text(b).c_str());
  for (int i = 0; i < 3; ++i)
    if (!close(a.v[i], b.v[i])) return 0;
  return 1;
}

// ---------------------------------------------------------------------------
// hMatrix

hMatrix::hMatrix() {
  for (int r = 0; r < 4; ++r)
    for (int c = 0; c < 4; ++c) m[r][c] = r == c ? 1.0f : 0.0f;
}

void hMatrix::copy(hMatrix &M) {
  hccore::call("hMatrix::copy", text(M).c_str());
  for (int r = 0; r < 4; ++r)
    for (int c = 0; c < 4; ++c) m[r][c] = M.m[r][c];
}

hMatrix hMatrix::setTranslation(hVector &v) {
  hccore::call("hMatrix::setTranslation", text(v).c_str());
  for (int r = 0; r < 3; ++r) m[r][3] = v.v[r];
  return *this;
}

hVector hMatrix::getTranslation() {
  hccore::call("hMatrix::getTranslation");
  return hVector(m[0][3], m[1][3], m[2][3]);
}

hVector hMatrix::getAxis(int ax) {
  hccore::call("hMatrix::getAxis", ax);
  if (ax < 0 || ax > 2) return hVector();
  return hVector(m[0][ax], m[1][ax], m[2][ax]);
}

void hMatrix::setAxis(int ax, hVector &v) {
  hccore::call("hMatrix::setAxis", ax, text(v).c_str());
  if (ax < 0 || ax > 2) return;
  for (int r = 0; r < 3; ++r) m[r][ax] = v.v[r];
}

hVector hMatrix::getXYZ() {
  hccore::call("hMatrix::getXYZ");
  double r[3][3], a[3];
  for (int i = 0; i < 3; ++i)
    for (int j = 0; j < 3; ++j) r[i][j] = m[i][j];
  xyzAngles(r, a);
  return hVector(static_cast<float>(a[0]), static_cast<float>(a[1]),
                 static_cast<float>(a[2]));
}

hVector hMatrix::getRot(char *order) {
  hccore::call("hMatrix::getRot", order);
  int perm[3] = {0, 1, 2};
  if (!parseOrder(order, perm)) perm[0] = 0, perm[1] = 1, perm[2] = 2;
  // Relabel the axes so that the order becomes x-y-z: with P the permutation
  // taking axis perm[k] to axis k, P Ri(t) P^T = Rx(d t) where d is the
  // determinant of P (+1 for an even, -1 for an odd permutation).
  double r[3][3], a[3];
  for (int i = 0; i < 3; ++i)
    for (int j = 0; j < 3; ++j) r[i][j] = m[perm[i]][perm[j]];
  const bool even = (perm[0] == 0 && perm[1] == 1) || (perm[0] == 1 && perm[1] == 2) ||
                    (perm[0] == 2 && perm[1] == 0);
  const double d = even ? 1 : -1;
  xyzAngles(r, a);
  double out[3];
  for (int k = 0; k < 3; ++k) out[perm[k]] = d * a[k];
  return hVector(static_cast<float>(out[0]), static_cast<float>(out[1]),
                 static_cast<float>(out[2]));
}

int hMatrix::inverse() {
  hccore::call("hMatrix::inverse");
  // Gauss-Jordan elimination with partial pivoting on [M | I].
  double a[4][8];
  double largest = 0;
  for (int r = 0; r < 4; ++r)
    for (int c = 0; c < 4; ++c) {
      a[r][c] = m[r][c];
      a[r][c + 4] = r == c;
      largest = std::fmax(largest, std::fabs(a[r][c]));
    }
  if (largest == 0) return 0;
  const double tiny = largest * 1e-12;
  for (int col = 0; col < 4; ++col) {
    int pivot = col;
    for (int r = col + 1; r < 4; ++r)
      if (std::fabs(a[r][col]) > std::fabs(a[pivot][col])) pivot = r;
    if (std::fabs(a[pivot][col]) <= tiny) return 0;
    if (pivot != col)
      for (int c = 0; c < 8; ++c) std::swap(a[pivot][c], a[col][c]);
    const double p = a[col][col];
    for (int c = 0; c < 8; ++c) a[col][c] /= p;
    for (int r = 0; r < 4; ++r) {
      if (r == col || a[r][col] == 0) continue;
      const double f = a[r][col];
      for (int c = 0; c < 8; ++c) a[r][c] -= f * a[col][c];
    }
  }
  for (int r = 0; r < 4; ++r)
    for (int c = 0; c < 4; ++c) m[r][c] = static_cast<float>(a[r][c + 4]);
  return 1;
}

int hMatrix::orthoInverse() {
  hccore::call("hMatrix::orthoInverse");
  // [R t; 0 1]^-1 = [R^T  -R^T t; 0 1]
  double rt[3][3], t[3];
  for (int r = 0; r < 3; ++r) {
    t[r] = m[r][3];
    for (int c = 0; c < 3; ++c) rt[r][c] = m[c][r];
  }
  for (int r = 0; r < 3; ++r) {
    double s = 0;
    for (int c = 0; c < 3; ++c) {
      m[r][c] = static_cast<float>(rt[r][c]);
      s += rt[r][c] * t[c];
    }
    m[r][3] = static_cast<float>(-s);
  }
  m[3][0] = m[3][1] = m[3][2] = 0;
  m[3][3] = 1;
  return 1;
}

int hMatrix::mult(hMatrix &a) {
  hccore::call("hMatrix::mult", text(a).c_str());
  multiplyRight(*this, a);
  return 1;
}

int hMatrix::scale(float s) {
  hccore::call("hMatrix::scale", s);
  for (int r = 0; r < 3; ++r)
    for (int c = 0; c < 3; ++c) m[r][c] *= s;
  return 1;
}

int hMatrix::orthoMult(hMatrix &a) {
  hccore::call("hMatrix::orthoMult", text(a).c_str());
  // Both operands rigid: the bottom rows are 0 0 0 1 and stay so.
  double out[3][4];
  for (int r = 0; r < 3; ++r)
    for (int c = 0; c < 4; ++c) {
      double s = c == 3 ? m[r][3] : 0.0;
      for (int k = 0; k < 3; ++k) s += double(m[r][k]) * a.m[k][c];
      out[r][c] = s;
    }
  for (int r = 0; r < 3; ++r)
    for (int c = 0; c < 4; ++c) m[r][c] = static_cast<float>(out[r][c]);
  m[3][0] = m[3][1] = m[3][2] = 0;
  m[3][3] = 1;
  return 1;
}

int hMatrix::sub(hMatrix &a) {
  hccore::call("hMatrix::sub", text(a).c_str());
  for (int r = 0; r < 4; ++r)
    for (int c = 0; c < 4; ++c) m[r][c] -= a.m[r][c];
  return 1;
}

int hMatrix::add(hMatrix &a) {
  hccore::call("hMatrix::add", text(a).c_str());
  for (int r = 0; r < 4; ++r)
    for (int c = 0; c < 4; ++c) m[r][c] += a.m[r][c];
  return 1;
}

void hMatrix::id() {
  hccore::call("hMatrix::id");
  for (int r = 0; r < 4; ++r)
    for (int c = 0; c < 4; ++c) m[r][c] = r == c ? 1.0f : 0.0f;
}

void hMatrix::setRotation(hVector &v) {
  hccore::call("hMatrix::setRotation", text(v).c_str());
  Mat rx, ry, rz, zy, out;
  axisRotation(0, v.v[0], rx);
  axisRotation(1, v.v[1], ry);
  axisRotation(2, v.v[2], rz);
  product(rz, ry, zy);
  product(zy, rx, out);
  for (int r = 0; r < 3; ++r)
    for (int c = 0; c < 3; ++c) m[r][c] = static_cast<float>(out[r][c]);
}

float hMatrix::toAxisAngle(hVector &axis) {
  hccore::call("hMatrix::toAxisAngle");
  double r[3][3];
  for (int i = 0; i < 3; ++i)
    for (int j = 0; j < 3; ++j) r[i][j] = m[i][j];
  const double cosine = std::fmax(-1.0, std::fmin(1.0, (r[0][0] + r[1][1] + r[2][2] - 1) / 2));
  // Twice the axis times sin(angle), from the skew-symmetric part.
  double s[3] = {r[2][1] - r[1][2], r[0][2] - r[2][0], r[1][0] - r[0][1]};
  const double twoSin = std::sqrt(s[0] * s[0] + s[1] * s[1] + s[2] * s[2]);
  const double angle = std::atan2(twoSin / 2, cosine);
  double n[3];
  if (angle < 1e-7) {
    // No rotation: any axis will do.
    n[0] = 1, n[1] = 0, n[2] = 0;
  } else if (cosine > -0.9) {
    for (int i = 0; i < 3; ++i) n[i] = s[i] / twoSin;
  } else {
    // Near a half turn the skew part vanishes; the symmetric part is
    // cos I + (1 - cos) n n^T, so take n from its largest diagonal column
    // and the sign from what skew part is left.
    double b[3][3];
    for (int i = 0; i < 3; ++i)
      for (int j = 0; j < 3; ++j)
        b[i][j] = ((r[i][j] + r[j][i]) / 2 - (i == j ? cosine : 0)) / (1 - cosine);
    int k = 0;
    for (int i = 1; i < 3; ++i)
      if (b[i][i] > b[k][k]) k = i;
    const double nk = std::sqrt(std::fmax(b[k][k], 0.0));
    if (nk < 1e-6) {
      // No rotation has this symmetric part (a reflection such as -I).
      axis = hVector(0, 0, 0);
      return 0;
    }
    for (int i = 0; i < 3; ++i) n[i] = i == k ? nk : b[i][k] / nk;
    const double dot = n[0] * s[0] + n[1] * s[1] + n[2] * s[2];
    if (dot < 0)
      for (double &c : n) c = -c;
    const double l = std::sqrt(n[0] * n[0] + n[1] * n[1] + n[2] * n[2]);
    for (double &c : n) c /= l;
  }
  for (int i = 0; i < 3; ++i) axis.v[i] = static_cast<float>(n[i]);
  return static_cast<float>(angle);
}

void hMatrix::fromAxisAngle(hVector &v, float theta) {
  hccore::call("hMatrix::fromAxisAngle", text(v).c_str(), theta);
  double n[3];
  Mat rot;
  if (unit(v, n))
    unitAxisRotation(n, theta, rot);
  else
    identity(rot);  // no axis, no rotation
  for (int r = 0; r < 3; ++r)
    for (int c = 0; c < 3; ++c) m[r][c] = static_cast<float>(rot[r][c]);
}

void hMatrix::transpose() {
  hccore::call("hMatrix::transpose");
  for (int r = 0; r < 4; ++r)
    for (int c = r + 1; c < 4; ++c) std::swap(m[r][c], m[c][r]);
}

void hMatrix::interp(hMatrix &a, hMatrix &b, float t) {
  hccore::call("hMatrix::interp", text(a).c_str(), text(b).c_str(), t);
  for (int r = 0; r < 4; ++r)
    for (int c = 0; c < 4; ++c)
      m[r][c] = static_cast<float>(a.m[r][c] + double(t) * (double(b.m[r][c]) - a.m[r][c]));
}

int hMatrix::homogenize() {
  hccore::call("hMatrix::homogenize");
  const float w = m[3][3];
  if (w == 0) return 0;
  for (int r = 0; r < 4; ++r)
    for (int c = 0; c < 4; ++c) m[r][c] /= w;
  m[3][3] = 1;
  return 1;
}

hMatrix hMatrix::rotateAround(int ax, float angle) {
  hccore::call("hMatrix::rotateAround", ax, angle);
  Mat rot, self, out;
  if (axisRotation(ax, angle, rot)) {
    load(*this, self);
    product(self, rot, out);
    store(out, *this);
  }
  return *this;
}

hMatrix hMatrix::rotateAroundAxis(hVector &axis, float angle) {
  hccore::call("hMatrix::rotateAroundAxis", text(axis).c_str(), angle);
  double n[3];
  if (unit(axis, n)) {
    Mat rot, self, out;
    unitAxisRotation(n, angle, rot);
    load(*this, self);
    product(self, rot, out);
    store(out, *this);
  }
  return *this;
}

hMatrix hMatrix::rotateAroundFrame(hMatrix &frame, int ax, float angle) {
  hccore::call("hMatrix::rotateAroundFrame", text(frame).c_str(), ax, angle);
  if (ax < 0 || ax > 2) return *this;
  // The line through the frame's origin along its axis ax, in world
  // coordinates: this = T(p) R(n, angle) T(-p) this.
  hVector dir(frame.m[0][ax], frame.m[1][ax], frame.m[2][ax]);
  double n[3];
  if (!unit(dir, n)) return *this;
  Mat rot, toOrigin, back, tmp, line, self, out;
  unitAxisRotation(n, angle, rot);
  identity(toOrigin);
  identity(back);
  for (int r = 0; r < 3; ++r) {
    toOrigin[r][3] = -double(frame.m[r][3]);
    back[r][3] = frame.m[r][3];
  }
  product(back, rot, tmp);
  product(tmp, toOrigin, line);
  load(*this, self);
  product(line, self, out);
  store(out, *this);
  return *this;
}

int operator==(const hMatrix &a, const hMatrix &b) {
  hccore::call("hMatrix::operator==", text(a).c_str(), text(b).c_str());
  for (int r = 0; r < 4; ++r)
    for (int c = 0; c < 4; ++c)
      if (!close(a.m[r][c], b.m[r][c])) return 0;
  return 1;
}
