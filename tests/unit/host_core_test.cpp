// Stand-in host core: arithmetic against hand-computed values, and the
// behaviour of lists, descriptors, observers, objects, values and properties.
#include <gtest/gtest.h>

#include <cmath>
#include <cstring>
#include <string>

#include "host/core.h"
#include "core/journal.h"

namespace {

constexpr float kPi = 3.14159265358979f;
constexpr float kEps = 1e-5f;

void ExpectVec(const hVector &v, float x, float y, float z) {
  EXPECT_NEAR(v.v[0], x, kEps);
  EXPECT_NEAR(v.v[1], y, kEps);
  EXPECT_NEAR(v.v[2], z, kEps);
}

hVector Apply(hMatrix m, float x, float y, float z) {
  hVector p(x, y, z);
  p.xform(m);
  return p;
}

// ---------------------------------------------------------------------------
TEST(HostVector, CrossDotAngleAndIndexing) {
  hVector x(1, 0, 0), y(0, 1, 0);
  hVector c = x;
  c.cross(y);
  ExpectVec(c, 0, 0, 1);
  hVector a(1, 2, 3), b(4, 5, 6);
  a.cross(b);
  ExpectVec(a, -3, 6, -3);

  hVector u(1, 2, 3);
  EXPECT_FLOAT_EQ(u.dotProd(b), 32);
  EXPECT_NEAR(x.angle(y), kPi / 2, kEps);
  hVector minusX(-2, 0, 0);
  EXPECT_NEAR(x.angle(minusX), kPi, kEps);
  hVector zero;
  EXPECT_EQ(x.angle(zero), 0);
  zero.normalize();
  ExpectVec(zero, 0, 0, 0);

  hVector w(3, 4, 12);
  EXPECT_FLOAT_EQ(w.mag(), 13);
  EXPECT_FLOAT_EQ(w.run(), 5);
  EXPECT_FLOAT_EQ(w.rise(), 12);
  EXPECT_EQ(w.set(3, 1), 0);
  EXPECT_EQ(w.set(-1, 1), 0);
  EXPECT_EQ(w.get(3), 0);
  ExpectVec(w, 3, 4, 12);
}

TEST(HostMatrix, RotationsFollowTheRightHandRule) {
  hMatrix rz;
  rz.rotateAround(2, kPi / 2);
  ExpectVec(Apply(rz, 1, 0, 0), 0, 1, 0);
  hMatrix rx;
  rx.rotateAround(0, kPi / 2);
  ExpectVec(Apply(rx, 0, 1, 0), 0, 0, 1);
  hMatrix ry;
  ry.rotateAround(1, kPi / 2);
  ExpectVec(Apply(ry, 0, 0, 1), 1, 0, 0);

  hMatrix aa;
  hVector zAxis(0, 0, 5);  // need not be unit
  aa.fromAxisAngle(zAxis, kPi / 2);
  EXPECT_TRUE(aa == rz);

  hMatrix same;
  same.rotateAround(3, 1.0f);  // bad axis: unchanged
  EXPECT_TRUE(same == hMatrix());
}

TEST(HostMatrix, MultComposesOnTheRight) {
  hMatrix m;
  hVector t(1, 0, 0);
  m.setTranslation(t);
  hMatrix rz;
  rz.rotateAround(2, kPi / 2);
  m.mult(rz);  // T * R: rotate first, then translate
  ExpectVec(Apply(m, 1, 0, 0), 1, 1, 0);

  hMatrix r2 = rz;
  hMatrix t2;
  t2.setTranslation(t);
  r2.mult(t2);  // R * T: translate first, then rotate
  ExpectVec(Apply(r2, 1, 0, 0), 0, 2, 0);

  hMatrix o = rz;
  o.orthoMult(t2);
  EXPECT_TRUE(o == r2);
}

TEST(HostMatrix, InverseOfRigidAndGeneralMatrices) {
  hMatrix m;
  hVector angles(0.3f, -0.4f, 1.1f), t(1, -2, 3);
  m.setRotation(angles);
  m.setTranslation(t);

  hMatrix inv = m;
  ASSERT_EQ(inv.inverse(), 1);
  hMatrix prod = m;
  prod.mult(inv);
  EXPECT_TRUE(prod == hMatrix());

  hMatrix ortho = m;
  EXPECT_EQ(ortho.orthoInverse(), 1);
  EXPECT_TRUE(ortho == inv);

  // A non-rigid matrix with a projective row.
  hMatrix g;
  const float vals[16] = {2, 1, 0, 1, 0, 3, 1, 0, 1, 0, 4, 2, 0, 1, 0, 5};
  std::memcpy(g.m, vals, sizeof vals);
  hMatrix gi = g;
  ASSERT_EQ(gi.inverse(), 1);
  gi.mult(g);
  EXPECT_TRUE(gi == hMatrix());

  hMatrix singular;
  singular.m[2][0] = 1, singular.m[2][1] = 1, singular.m[2][2] = 0;
  singular.m[0][0] = 1, singular.m[0][1] = 1;
  singular.m[1][0] = 2, singular.m[1][1] = 2;
  hMatrix before = singular;
  EXPECT_EQ(singular.inverse(), 0);
  EXPECT_TRUE(singular == before);
}

TEST(HostMatrix, AxisAngleRoundTrips) {
  const float cases[][4] = {{0, 0, 1, 0.7f},   {1, 2, 3, 1.2f},  {-1, 1, 0, 2.5f},
                            {0.3f, -0.5f, 0.8f, 3.1f}, {2, -1, 1, 1e-3f}};
  for (const auto &c : cases) {
    hVector axis(c[0], c[1], c[2]);
    hMatrix m;
    m.fromAxisAngle(axis, c[3]);
    hVector got;
    const float angle = m.toAxisAngle(got);
    axis.normalize();
    EXPECT_NEAR(angle, c[3], 1e-4f) << c[0] << " " << c[1] << " " << c[2];
    EXPECT_NEAR(got.dotProd(axis), 1, 1e-4f) << c[0] << " " << c[1] << " " << c[2];
  }
  // A half turn: the axis is defined up to its sign.
  hVector x(1, 0, 0), half;
  hMatrix h;
  h.fromAxisAngle(x, kPi);
  EXPECT_NEAR(h.toAxisAngle(half), kPi, 1e-4f);
  EXPECT_NEAR(std::fabs(half.dotProd(x)), 1, 1e-4f);

  hVector any;
  EXPECT_EQ(hMatrix().toAxisAngle(any), 0);
  EXPECT_NEAR(any.mag(), 1, kEps);
}

TEST(HostMatrix, EulerAnglesRoundTrip) {
  hVector v(0.3f, -0.7f, 1.2f);
  hMatrix m;
  m.setRotation(v);
  hVector back = m.getXYZ();
  ExpectVec(back, 0.3f, -0.7f, 1.2f);
  char xyz[] = "xyz", bad[] = "xxz";
  ExpectVec(m.getRot(xyz), 0.3f, -0.7f, 1.2f);
  ExpectVec(m.getRot(bad), 0.3f, -0.7f, 1.2f);
  ExpectVec(m.getRot(nullptr), 0.3f, -0.7f, 1.2f);

  // "zyx": rotate about z first, then y, then x, so R = Rx * Ry * Rz.
  hMatrix r;
  r.rotateAround(0, 0.3f);
  r.rotateAround(1, -0.7f);
  r.rotateAround(2, 1.2f);
  char zyx[] = "zyx", yxz[] = "yxz";
  ExpectVec(r.getRot(zyx), 0.3f, -0.7f, 1.2f);
  // "yxz": R = Rz * Rx * Ry.
  hMatrix q;
  q.rotateAround(2, 1.2f);
  q.rotateAround(0, 0.3f);
  q.rotateAround(1, -0.7f);
  ExpectVec(q.getRot(yxz), 0.3f, -0.7f, 1.2f);
  // "zxy": R = Ry * Rx * Rz.
  hMatrix e;
  e.rotateAround(1, -0.7f);
  e.rotateAround(0, 0.3f);
  e.rotateAround(2, 1.2f);
  char zxy[] = "ZXY";
  ExpectVec(e.getRot(zxy), 0.3f, -0.7f, 1.2f);
}

TEST(HostMatrix, RotateAroundFrameTurnsAboutTheFrameAxisLine) {
  hMatrix frame;
  hVector origin(1, 0, 0);
  frame.setTranslation(origin);
  hMatrix body;
  hVector at(2, 0, 0);
  body.setTranslation(at);
  body.rotateAroundFrame(frame, 2, kPi / 2);
  ExpectVec(body.getTranslation(), 1, 1, 0);
  ExpectVec(body.getAxis(0), 0, 1, 0);
  ExpectVec(body.getAxis(7), 0, 0, 0);

  hMatrix h;
  h.m[3][3] = 0;
  EXPECT_EQ(h.homogenize(), 0);
  hMatrix two;
  two.m[3][3] = 2, two.m[0][3] = 4;
  EXPECT_EQ(two.homogenize(), 1);
  EXPECT_FLOAT_EQ(two.m[0][3], 2);
}

// ---------------------------------------------------------------------------
int gFreed = 0;
void CountFree(void *) { ++gFreed; }

TEST(HostList, AppendIterateDeleteDestroy) {
  int data[4] = {0, 1, 2, 3};
  hList *head = nullptr;
  for (int &d : data) hList::append(&head, &d);
  EXPECT_EQ(hList::count(head), 4);

  std::string seen;
  for (hList *n = hList::iterator(head, nullptr); n; n = circlistiterator(head, n))
    seen += std::to_string(*static_cast<int *>(n->getData()));
  EXPECT_EQ(seen, "0123");

  hList::deleteNode(&head, head, CountFree);  // the head itself
  EXPECT_EQ(gFreed, 1);
  EXPECT_EQ(*static_cast<int *>(head->getData()), 1);
  hList *other = nullptr;
  hList::append(&other, &data[0]);
  hList::deleteNode(&head, other, CountFree);  // not a node of head: ignored
  EXPECT_EQ(hList::count(head), 3);

  EXPECT_EQ(hList::destroy(&head, CountFree), 3);
  EXPECT_EQ(head, nullptr);
  EXPECT_EQ(gFreed, 4);
  EXPECT_EQ(hList::destroy(&other, nullptr), 1);
  EXPECT_EQ(hList::destroy(nullptr, nullptr), 0);
  EXPECT_EQ(hList::iterator(nullptr, nullptr), nullptr);
  hList::deleteNode(nullptr, nullptr, nullptr);
}

// ---------------------------------------------------------------------------
TEST(HostTypes, TreeLookup) {
  hcType *figure = hcType::getType("hcFigure");
  hcType *node = hcType::getType("hcNode");
  hcType *subject = hcType::getType("hcSubject");
  ASSERT_NE(figure, nullptr);
  EXPECT_EQ(figure->getAncestor(), node);
  EXPECT_EQ(figure->getNumAncestors(), 3);
  EXPECT_EQ(figure->isDerivedFrom(subject), 1);
  EXPECT_EQ(figure->isDerivedFrom(figure), 1);
  EXPECT_EQ(node->isDerivedFrom(figure), 0);
  EXPECT_EQ(figure->isDerivedFrom(nullptr), 0);
  EXPECT_EQ(hcType::getType("hcFigurePathMotion")->getAncestor()->getName(),
            std::string("hcPathMotion"));
  hcType *glyph = hcType::getType("hcGlyph");
  EXPECT_EQ(glyph->getNumDescendents(), 5);
  EXPECT_EQ(glyph->getDescendent(5), nullptr);
  EXPECT_EQ(hcType::getType("nope"), nullptr);
  EXPECT_EQ(hcType::getType(nullptr), nullptr);
  EXPECT_GE(hcType::getNumTypes(), 60);

  hcNode n;
  EXPECT_EQ(n.getType(), node);
  EXPECT_EQ(hcNode::getClassType(), node);
  EXPECT_EQ(hcObject::getClassType(), hcType::getType("hcObject"));
}

TEST(HostTypes, TypeTables) {
  hcTypeTable *t = hcTypeTable::create("unitTable");
  EXPECT_EQ(hcTypeTable::create("unitTable"), t);
  EXPECT_EQ(t->addEntry("a", 7), 1);
  EXPECT_EQ(t->addEntry("a", 8), 0);
  EXPECT_EQ(t->findToken("a"), 7);
  EXPECT_EQ(t->findToken(nullptr), -1);
  EXPECT_STREQ(t->findName(7), "a");
  EXPECT_EQ(t->findName(9), nullptr);
  delete t;
  EXPECT_EQ(hcTypeTable::findTable("unitTable"), nullptr);
}

// ---------------------------------------------------------------------------
TEST(HostObservers, NotifyFiltersByAspect) {
  auto *s = new hcSubject;
  auto *all = new hcObserver("all", "unitType", s);
  auto *upd = new hcObserver("upd", nullptr, s, hcObserver::UPDATE);
  s->notify(hcObserver::DESTROY);
  EXPECT_EQ(all->getUpdateCount(), 1);
  EXPECT_EQ(upd->getUpdateCount(), 0);
  EXPECT_EQ(hcjournal::last(), "hcSubject::notify 1");
  EXPECT_EQ(hcjournal::last(1), "hcObserver::update 1");
  s->notify(hcObserver::ALL);
  EXPECT_EQ(upd->getUpdateCount(), 1);
  EXPECT_EQ(s->getObservers(hcObserver::UPDATE)->size(), 2u);
  EXPECT_EQ(s->getObservers(hcObserver::DESTROY)->size(), 1u);

  EXPECT_EQ(hcObserver::find("upd"), upd);
  EXPECT_EQ(hcObserver::getTypeTable()->findToken("unitType"), all->getTypeIndex());

  // A destroyed observer leaves its subject.
  delete upd;
  EXPECT_EQ(s->getObservers()->size(), 1u);
  s->notify(hcObserver::UPDATE);
  EXPECT_EQ(all->getUpdateCount(), 3);

  // The subject goes: the observer hears DESTROY, loses it and is purged.
  delete s;
  EXPECT_EQ(all->getLastProtocol(), hcObserver::DESTROY);
  EXPECT_EQ(all->getSubject(), nullptr);
  EXPECT_EQ(hcObserver::getNumberPurgeObservers(), 1);
  hcObserver::purge();
  EXPECT_EQ(hcObserver::getNumberPurgeObservers(), 0);
  EXPECT_EQ(hcObserver::find("all"), nullptr);
}

TEST(HostObservers, SetSubjectMovesTheObserver) {
  hcSubject a, b;
  hcObserver o("mover", nullptr, &a);
  o.setSubject(&b, hcObserver::UPDATE);
  EXPECT_EQ(a.getObservers()->size(), 0u);
  EXPECT_EQ(o.getSubject(), &b);
  b.invalid();
  EXPECT_EQ(o.getLastProtocol(), hcObserver::UPDATE);
  b.detach(&o);
  EXPECT_EQ(o.getSubject(), nullptr);
  EXPECT_EQ(hcObserver::getNumberPurgeObservers(), 0);  // detached, not orphaned
}

// ---------------------------------------------------------------------------
TEST(HostObject, NamesAndLookup) {
  hcObject a, b;
  a.setFullName("scene.", "fig1");
  EXPECT_STREQ(a.getFullName(), "scene.fig1");
  hcObserver watch("watch", nullptr, &a);
  EXPECT_EQ(a.setName("fig2"), 1);
  EXPECT_STREQ(a.getFullName(), "scene.fig2");
  EXPECT_EQ(watch.getLastProtocol(), hcObserver::UPDATE);
  EXPECT_EQ(a.setName(nullptr), 0);
  b.setFullName(nullptr, "fig3");

  hList *objs = nullptr;
  hList::append(&objs, &a);
  hList::append(&objs, &b);
  EXPECT_EQ(hcObject::find(objs, "scene.fig2"), &a);
  EXPECT_EQ(hcObject::find(objs, "fig2"), &a);
  EXPECT_EQ(hcObject::find(objs, "none"), nullptr);
  EXPECT_EQ(hcObject::find(nullptr, "fig2"), nullptr);

  char clash[] = "fig2";
  hcObject::uniqueName(clash, objs);
  EXPECT_STREQ(clash, "fig4");  // fig3 is taken too
  char wrap[] = "fig9";
  b.setName("fig0");
  a.setName("fig9");
  hcObject::uniqueName(wrap, objs);
  EXPECT_STREQ(wrap, "fig1");  // same width, never longer
  char noDigits[] = "fig";
  a.setName("fig");
  hcObject::uniqueName(noDigits, objs);
  EXPECT_STREQ(noDigits, "fig");
  hList::destroy(&objs, nullptr);
}

TEST(HostObject, DescriptionsAndTimestamps) {
  hcNode n;
  n.setName("knee");
  char buf[64];
  n.tessprint(buf, 0, sizeof buf);
  EXPECT_STREQ(buf, "hcNode knee");
  char tiny[5] = {'x', 'x', 'x', 'x', 'x'};
  n.tessprint(tiny, 0, 4);
  EXPECT_STREQ(tiny, "hcN");
  n.tessprint(tiny, 0, 0);  // writes nothing
  EXPECT_STREQ(tiny, "hcN");

  char *text = nullptr;
  const int len = n.sprint(&text);
  ASSERT_NE(text, nullptr);
  EXPECT_EQ(len, static_cast<int>(std::strlen(text)));
  EXPECT_EQ(n.sprint(nullptr), 0);

  hcObject a, b;
  a.setTimestamp();
  b.setTimestamp();
  EXPECT_GT(b.getTimestamp(), a.getTimestamp());
}

TEST(HostObject, DeletionJournalsTheDeletedClassLast) {
  hcObject *o = new hcNode;
  new hcObserver("deletionWatch", nullptr, o);  // released by the purge
  delete o;
  EXPECT_EQ(hcjournal::last(), "hcNode::~hcNode");
  EXPECT_EQ(hcjournal::last(1), "hcObserver::update 1");
  hcObserver::purge();
}

// ---------------------------------------------------------------------------
TEST(HostValue, KindsRoundTripAndMismatchesLeaveVariables) {
  hcValue v;
  v.set(0.5f);
  float f = 0;
  EXPECT_EQ(v.get(f), 1);
  EXPECT_EQ(f, 0.5f);
  char *s = nullptr;
  EXPECT_EQ(v.get(s), 0);
  EXPECT_EQ(s, nullptr);
  EXPECT_STREQ(v.tessprint(), "number 0.5");

  v.set("abc");
  EXPECT_EQ(v.getType(), hcValue::V_STRING);
  ASSERT_EQ(v.get(s), 1);
  v.set(s);  // from its own text
  EXPECT_STREQ(v.tessprint(), "string abc");
  v.set(static_cast<const char *>(nullptr));
  EXPECT_EQ(v.getType(), hcValue::V_UNDEF);

  hMatrix m;
  m.m[0][3] = 7;
  v.set(&m);
  hMatrix out;
  hMatrix *pm = &out;
  EXPECT_EQ(v.get(pm), 1);
  EXPECT_EQ(out.m[0][3], 7);
  hMatrix *none = nullptr;
  EXPECT_EQ(v.get(none), 1);
  EXPECT_EQ(none, nullptr);
  hVector vec(1, 2, 3), *pv = &vec;
  EXPECT_EQ(v.get(pv), 0);

  v.set(&vec);
  hcValue *c = v.copy();
  v.nil();
  EXPECT_STREQ(c->tessprint(), "vector 1 2 3");
  EXPECT_STREQ(c->getTypeName(), "vector");
  hcValue::destroy(c);
  hcValue::destroy(nullptr);
  v.set(static_cast<hMatrix *>(nullptr));
  EXPECT_EQ(v.getType(), hcValue::V_UNDEF);
}

TEST(HostProperties, ListAndObjectForwarding) {
  hcPropertyList p;
  hcValue one, got;
  one.set(1.0f);
  EXPECT_EQ(p.set("b", one), 1);
  EXPECT_EQ(p.set("b", one), 2);
  EXPECT_EQ(p.set("a", one), 1);
  EXPECT_EQ(p.set(nullptr, one), 0);
  EXPECT_EQ(p.get("b", &got), 1);
  EXPECT_EQ(got.getType(), hcValue::V_NUMBER);
  EXPECT_EQ(p.get(nullptr, &got), 0);
  EXPECT_EQ(p.get("b", nullptr), 0);
  auto names = p.names();
  EXPECT_EQ(std::string(names.front()) + names.back(), "ab");
  EXPECT_EQ(p.remove("a"), 1);
  EXPECT_EQ(p.remove("a"), 0);
  EXPECT_EQ(p.remove(nullptr), 0);

  hcObject o;
  hcValue text;
  text.set("red");
  EXPECT_EQ(o.getProperty("colour", &got), 0);
  EXPECT_EQ(o.setProperty("colour", text), 1);
  EXPECT_EQ(hcjournal::last(), "hcObject::setProperty colour string red");
  EXPECT_EQ(o.searchProperty("colour", &got), 1);
  EXPECT_STREQ(got.tessprint(), "string red");
  EXPECT_EQ(o.getPropertyList()->count(), 1);
  EXPECT_EQ(o.removeProperty("colour"), 1);
  EXPECT_EQ(o.removeProperty(nullptr), 0);
}

// ---------------------------------------------------------------------------
TEST(HostRefObject, JoinsAndLeavesLists) {
  hList *l1 = nullptr, *l2 = nullptr;
  hcRefObject r(3);
  EXPECT_EQ(r.type, 3);
  EXPECT_EQ(r.magic, 0);
  r.attach(&l1);
  r.attach(&l2);
  r.attach(nullptr);
  EXPECT_EQ(hList::count(l1), 1);
  EXPECT_EQ(l1->getData(), &r);
  r.detach(&l1);
  EXPECT_EQ(l1, nullptr);
  EXPECT_EQ(hList::count(l2), 1);
  r.detach(nullptr);
  EXPECT_EQ(l2, nullptr);

  {
    hcRefObject leaving(1);
    leaving.set_detach_behavior(1);
    leaving.attach(&l1);
  }
  EXPECT_EQ(l1, nullptr);
}

}  // namespace

// The host's unit tests read the journal: turn it on before any test runs.
namespace {
const bool kJournalOn = (hcjournal::setEnabled(true), true);
}  // namespace
