// Helpers shared by the figure sources: journal texts, small matrix
// routines and hList utilities.
#include <cmath>
#include <cstring>

#include "host/figure.h"
#include "figure/figure_detail.h"

namespace hcfigure_detail {

std::string argText(const hVector &v) {
  std::string s = "{";
  for (int i = 0; i < 3; ++i) {
    if (i) s += ' ';
    s += hcjournal::print(v.v[i]);
  }
  return s + "}";
}

std::string argText(const hMatrix &m) {
  std::string s = "{";
  for (int r = 0; r < 4; ++r)
    for (int c = 0; c < 4; ++c) {
      if (r || c) s += ' ';
      s += hcjournal::print(m.m[r][c]);
    }
  return s + "}";
}

hMatrix mul(const hMatrix &a, const hMatrix &b) {
  hMatrix r;
  for (int i = 0; i < 4; ++i)
    for (int j = 0; j < 4; ++j) {
      double s = 0;
      for (int k = 0; k < 4; ++k) s += double(a.m[i][k]) * b.m[k][j];
      r.m[i][j] = static_cast<float>(s);
    }
  return r;
}

hMatrix inverse(const hMatrix &a) {
  // Gauss-Jordan elimination with partial pivoting, in double precision.
  double w[4][8];
  for (int i = 0; i < 4; ++i)
    for (int j = 0; j < 4; ++j) {
      w[i][j] = a.m[i][j];
      w[i][j + 4] = i == j ? 1.0 : 0.0;
    }
  for (int c = 0; c < 4; ++c) {
    int p = c;
    for (int r = c + 1; r < 4; ++r)
      if (std::fabs(w[r][c]) > std::fabs(w[p][c])) p = r;
    if (std::fabs(w[p][c]) < 1e-12) return hMatrix();
    if (p != c)
      for (int j = 0; j < 8; ++j) std::swap(w[p][j], w[c][j]);
    double d = w[c][c];
    for (int j = 0; j < 8; ++j) w[c][j] /= d;
    for (int r = 0; r < 4; ++r) {
      if (r == c || w[r][c] == 0.0) continue;
      double f = w[r][c];
      for (int j = 0; j < 8; ++j) w[r][j] -= f * w[c][j];
    }
  }
  hMatrix r;
  for (int i = 0; i < 4; ++i)
    for (int j = 0; j < 4; ++j) r.m[i][j] = static_cast<float>(w[i][j + 4]);
  return r;
}

hMatrix rotation(const hVector &axis, float angle) {
  // Rodrigues' formula for a unit axis.
  double x = axis.v[0], y = axis.v[1], z = axis.v[2];
  double c = std::cos(angle), s = std::sin(angle), t = 1 - c;
  hMatrix r;
  r.m[0][0] = float(t * x * x + c);
  r.m[0][1] = float(t * x * y - s * z);
  r.m[0][2] = float(t * x * z + s * y);
  r.m[1][0] = float(t * x * y + s * z);
  r.m[1][1] = float(t * y * y + c);
  r.m[1][2] = float(t * y * z - s * x);
  r.m[2][0] = float(t * x * z - s * y);
  r.m[2][1] = float(t * y * z + s * x);
  r.m[2][2] = float(t * z * z + c);
  return r;
}

hMatrix translation(const hVector &t) {
  hMatrix r;
  for (int i = 0; i < 3; ++i) r.m[i][3] = t.v[i];
  return r;
}

hMatrix fromXYZ(const hVector &angles) {
  // R = Rz * Ry * Rx: rotations about the fixed x, then y, then z axes.
  hVector ex(1, 0, 0), ey(0, 1, 0), ez(0, 0, 1);
  return mul(rotation(ez, angles.v[2]),
             mul(rotation(ey, angles.v[1]), rotation(ex, angles.v[0])));
}

hVector toXYZ(const hMatrix &m) {
  // Inverse of fromXYZ, by the one decomposition hMatrix::getXYZ uses.
  hccore::Quiet quiet;
  hMatrix copy = m;
  return copy.getXYZ();
}

hVector apply(const hMatrix &m, const hVector &p) {
  hVector r;
  for (int i = 0; i < 3; ++i)
    r.v[i] = m.m[i][0] * p.v[0] + m.m[i][1] * p.v[1] + m.m[i][2] * p.v[2] +
             m.m[i][3];
  return r;
}

hVector origin(const hMatrix &m) {
  return hVector(m.m[0][3], m.m[1][3], m.m[2][3]);
}

bool contains(hList *head, const void *data) {
  for (hList *n = hList::iterator(head, nullptr); n;
       n = hList::iterator(head, n))
    if (n->getData() == data) return true;
  return false;
}

void appendOnce(hList **head, void *data) {
  if (!contains(*head, data)) hList::append(head, data);
}

void remove(hList **head, const void *data) {
  for (hList *n = hList::iterator(*head, nullptr); n;
       n = hList::iterator(*head, n))
    if (n->getData() == data) {
      hList::deleteNode(head, n, nullptr);
      return;
    }
}

bool sameName(hcObject *o, const char *name) {
  if (!o || !name) return false;
  const char *n = o->name;
  const char *f = o->fullname;
  return (n && std::strcmp(n, name) == 0) || (f && std::strcmp(f, name) == 0);
}

}  // namespace hcfigure_detail
