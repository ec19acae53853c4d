// Host library: core object model.
//
// Type descriptors, type tables, subjects and observers, reference objects,
// the named object and the tree node, tagged values and property lists,
// vectors, matrices and the circular list.
//
// Conventions of the vector and matrix arithmetic (also stated in
// host/core_math.cpp):
//   * vectors are column vectors; a matrix transforms a point p as M * p,
//     with the translation in column 3 (m[0][3], m[1][3], m[2][3]);
//   * angles are in radians;
//   * axes are numbered 0 = x, 1 = y, 2 = z.
//
// Parameters that must name an object (vector and matrix operands) are
// references; the binding layer refuses "NULL" for them.  Pointer parameters
// may be null and every operation then answers its failure value.
#pragma once

#include <cstddef>
#include <list>
#include <map>
#include <string>
#include <vector>


class hcType;
class hcTypeTable;
class hcSubject;
class hcObserver;
class hcObject;
class hcNode;
class hcValue;
class hcPropertyList;
class hVector;
class hMatrix;
class hList;

// Classes of other families that values and lists refer to.
class hcFigure;
class hcSegment;
class hcSite;
class hcJoint;
class hcMaterial;
class hcConstraint;
class hcTexture;
class hcDOF;
// The embedded script interpreter's object structure (opaque here).
struct _object;
typedef struct _object PyObject;

// ---------------------------------------------------------------------------
// Lists and their owners.
//
// A list an operation answers (getSegments, getSites, getJoints and every
// other list getter) belongs to the object that answered it and stays valid
// as long as that object lives: each call rewrites the same list in place
// with the present contents.  A list held across an edit keeps the contents
// of its last answer less the objects destroyed since (a list all of whose
// objects were destroyed holds one null entry), so it never leads to a dead
// object; hList::destroy leaves such a list alone.
// The host's own registries are never handed out.  A list an operation
// takes is only read during the call, and only its entries that are live
// objects of the kind the operation expects are used.
class hList;
class HandedList {
 public:
  HandedList() = default;
  ~HandedList();
  HandedList(const HandedList &) = delete;
  HandedList &operator=(const HandedList &) = delete;
  // Rewrites the list with items and answers it; null (the empty list) when
  // there are none, though a list answered earlier stays allocated.
  hList *answer(const std::vector<void *> &items);
  // True when head is a list some owner answered.
  static bool isHandedOut(const hList *head);
  // Takes item out of every list handed out (called as an object or an
  // observer dies).
  static void forget(const void *item);

 private:
  hList *head_ = nullptr;
};

// True while p is a live hcObject (of any class).
bool hcIsLiveObject(const void *p);

// ---------------------------------------------------------------------------
// hList: a node of a circular doubly linked list of untyped pointers.  A list
// is addressed by its head node; the empty list is a null pointer.
class hList {
 public:
  using ElementFn = void (*)(void *);

  void *getData();

  // The node after l in the list headed by sl; the first node when l is null;
  // null after the last node (or when sl is null).
  static hList *iterator(hList *sl, hList *l);
  // Adds a node holding data at the end, creating the list when *head is null.
  static void append(hList **head, void *data);
  // Unlinks and frees node; fn, if given, is applied to its data.
  static void deleteNode(hList **head, hList *node, ElementFn fn);
  // Frees every node (applying fn to each datum if given) and sets *head to
  // null.  Answers the number of nodes freed.
  static int destroy(hList **head, ElementFn fn);
  // Number of nodes in the list (0 for null).
  static int count(hList *head);

 private:
  friend class HandedList;
  void *data_ = nullptr;
  hList *next_ = nullptr;
  hList *prev_ = nullptr;
};

// Same stepping as hList::iterator.
hList *circlistiterator(hList *head, hList *node);

// ---------------------------------------------------------------------------
class hVector {
 public:
  float v[3];

  hVector();  // zero vector
  hVector(float x, float y, float z);

  void copy(hVector &V);
  float get(int index);              // 0 for an index outside 0..2
  int set(int index, float val);     // 1 on success, 0 for a bad index
  int sub(hVector &a);               // this -= a; answers 1
  int add(hVector &a);               // this += a; answers 1
  float mag();
  float dotProd(hVector &a);
  void cross(hVector vect);          // this = this x vect
  void normalize();                  // a zero vector stays zero
  void xform(hMatrix mat);           // this = mat * this (as a point)
  void scale(float n);
  float rise();                      // the z component
  float run();                       // length of the projection on x-y
  hVector horizontal();              // (x, y, 0)
  float angle(hVector &other);       // angle between the two, radians
};
// Equality within a tolerance of 1e-6 relative to the larger magnitude (or
// absolute below 1), component by component.
int operator==(const hVector &a, const hVector &b);

// ---------------------------------------------------------------------------
class hMatrix {
 public:
  float m[4][4];

  hMatrix();  // identity

  void copy(hMatrix &M);
  // Sets the translation column to v; answers the resulting matrix.
  hMatrix setTranslation(hVector &v);
  hVector getTranslation();
  hVector getAxis(int ax);           // column ax (0..2); zero for a bad axis
  void setAxis(int ax, hVector &v);  // ignored for a bad axis
  // Fixed-axis x-y-z angles (radians) of the rotation part.
  hVector getXYZ();
  // Angles of the rotation part in the order named by text ("xyz", "zyx",
  // ...); a text that names no valid order answers the "xyz" angles.
  hVector getRot(char *order);
  int inverse();       // general inverse; 0 (matrix unchanged) if singular
  int orthoInverse();  // inverse of a rigid transform; answers 1
  int mult(hMatrix &a);       // this = this * a; answers 1
  int scale(float s);         // multiplies the rotation part; answers 1
  int orthoMult(hMatrix &a);  // this = this * a for rigid transforms
  int sub(hMatrix &a);        // element-wise; answers 1
  int add(hMatrix &a);        // element-wise; answers 1
  void id();
  // Sets the rotation part from fixed-axis x-y-z angles (radians).
  void setRotation(hVector &v);
  // Writes the unit rotation axis into axis and answers the angle (0 to
  // pi).  Always finite: without a rotation the axis is x and the angle 0;
  // a matrix no rotation matches (-I) gives the zero axis and 0.
  float toAxisAngle(hVector &axis);
  void fromAxisAngle(hVector &v, float theta);
  void transpose();
  // this = a + t (b - a), element-wise.
  void interp(hMatrix &a, hMatrix &b, float t);
  // Divides by m[3][3]; 0 when it is zero.
  int homogenize();
  // this = this * R(axis, angle); answers the result.
  hMatrix rotateAround(int ax, float angle);
  hMatrix rotateAroundAxis(hVector &axis, float angle);
  // Rotation about axis ax of frame, applied to this in world coordinates.
  hMatrix rotateAroundFrame(hMatrix &frame, int ax, float angle);
};
// Equality with the tolerance of the vector comparison, element by element.
int operator==(const hMatrix &a, const hMatrix &b);

// ---------------------------------------------------------------------------
// Run-time type descriptors, one per host class.
class hcType {
 public:
  const char *getName();
  hcType *getAncestor();           // direct base, null for a root
  int getNumAncestors();           // depth below its root
  int isDerivedFrom(hcType *t);    // 1 when t is this type or an ancestor
  int getNumDescendents();         // direct descendants
  hcType *getDescendent(unsigned int i);  // null when out of range
  static hcType *getType(const char *name);  // null when unknown
  static int getNumTypes();

  // Host-side construction of the descriptor table.
  hcType(const char *name, hcType *ancestor);

 private:
  std::string name_;
  hcType *ancestor_;
  std::vector<hcType *> descendents_;
};

// ---------------------------------------------------------------------------
// Named tables of (name, token) pairs.
class hcTypeTable {
 public:
  static hcTypeTable *create(const char *newName);
  virtual ~hcTypeTable();
  int addEntry(const char *newName, int token);   // 1 added, 0 duplicate
  int findToken(const char *findName);            // -1 when absent
  const char *findName(int token);                // null when absent
  static hcTypeTable *findTable(const char *findName);

 private:
  explicit hcTypeTable(const char *name);
  std::string name_;
  std::vector<std::pair<std::string, int>> entries_;
};

// ---------------------------------------------------------------------------
class hcObserver {
 public:
  enum updateProtocol : int { UPDATE = 0, DESTROY = 1, ALL = 2 };
  struct observerList : std::list<hcObserver *> {};

  hcObserver(const char *name, const char *tstring, hcSubject *subject,
             int protocol = ALL);
  virtual void update(int protocol);
  virtual ~hcObserver();

  const char *getName();
  void setName(const char *n);
  int getTypeIndex();
  const char *getTypeName();
  static observerList *getList();
  static hList *getObserverList();
  static hcObserver *find(const char *name);
  static hcTypeTable *getTypeTable();
  static void purge();  // destroys observers whose subject has gone
  void setSubject(hcSubject *subject, int protocol = ALL);
  static int getNumberPurgeObservers();

  // Host-side state, readable by tests through the commands above.
  int getUpdateCount() const { return updates_; }
  int getLastProtocol() const { return lastProtocol_; }
  hcSubject *getSubject() const { return subject_; }
  void subjectGone();

 private:
  std::string name_;
  std::string typeName_;
  hcSubject *subject_ = nullptr;
  int updates_ = 0;
  int lastProtocol_ = -1;
  bool subjectLost_ = false;  // the subject was destroyed under us
  friend class hcSubject;
};

// ---------------------------------------------------------------------------
class hcSubject {
 public:
  hcSubject();
  virtual ~hcSubject();
  // Observers attached with aspect ALL receive every protocol; others only
  // their own.
  virtual void attach(hcObserver *observer, int aspect = hcObserver::ALL);
  virtual void detach(hcObserver *observer);
  virtual void notify(int protocol);
  virtual void invalid();  // notifies UPDATE
  // Observers that receive protocol (ALL: every observer).  The list is
  // owned by the subject and rebuilt on each call.
  hcObserver::observerList *getObservers(int protocol = hcObserver::ALL);

  // A copy is a new subject without observers.
  hcSubject(const hcSubject &other);
  hcSubject &operator=(const hcSubject &other);

 protected:
  // Notifies DESTROY, tells the observers whose subject this is that it is
  // gone and forgets every observer.  Idempotent; destructors of derived
  // classes may call it first so observers see the object still whole.
  void releaseObservers();

 private:
  friend class hcObserver;
  std::vector<std::pair<hcObserver *, int>> observers_;
  hcObserver::observerList answer_;
};

// ---------------------------------------------------------------------------
class hcRefObject {
 public:
  short magic;
  short type;
  hList **list;
  hList *lists;
  int deleting_flag;

  explicit hcRefObject(short t);
  virtual ~hcRefObject();
  virtual void reserved();
  // Appends this object to the list *l (and remembers it); null l ignored.
  virtual void attach(hList **l);
  // Removes this object from *l, or from every list it joined when l is null.
  virtual void detach(hList **l);
  void set_detach_behavior(int i);

 private:
  std::vector<hList **> joined_;
  int detachBehavior_ = 0;
};

// ---------------------------------------------------------------------------
class hcObject : public hcSubject {
 public:
  char *name;
  char *fullname;

  static hcType *getClassType();
  hcObject();
  virtual ~hcObject();
  const char *getName();
  const char *getFullName();
  // The object in objs (a list of hcObject pointers) whose full name, or
  // failing that name, equals fname; null when none.
  static hcObject *find(hList *objs, const char *fname);
  // Sets the name to newName and the full name to prefix + newName.
  void setFullName(const char *prefix, const char *newName);
  virtual int setName(const char *newName);  // 1 on success, 0 for null
  // Rewrites uniqName in place (never longer) so that no object in objs
  // bears it: a trailing number is changed.  Its length never grows.
  static void uniqueName(char *uniqName, hList *objs);
  int getTimestamp();
  virtual void setTimestamp();
  static void notifySimFunc();
  hcType *getType();
  // Writes the description into buffer (which must hold size bytes).
  virtual void tessprint(char *buffer, int level, std::size_t size);
  virtual void reserved();
  // Points *buffer at a description owned by the object; answers its length.
  virtual int sprint(char **buffer);
  virtual int searchProperty(const char *name, hcValue *value);
  int getProperty(const char *name, hcValue *value);
  int setProperty(const char *name, hcValue value);
  int removeProperty(const char *name);
  hcPropertyList *getPropertyList();
  int setScriptObject(PyObject *object);
  PyObject *getScriptObject();

  // Copies own their names and property list.
  hcObject(const hcObject &other);
  hcObject &operator=(const hcObject &other);

 protected:
  // The descriptor of the object's own class; derived classes override it.
  virtual const char *className() const { return "hcObject"; }

 private:
  int timestamp_ = 0;
  hcPropertyList *properties_ = nullptr;
  PyObject *scriptObject_ = nullptr;
  std::string sprintText_;
};

// ---------------------------------------------------------------------------
class hcNode : public hcObject {
 public:
  static hcType *getClassType();
  hcNode();
  virtual ~hcNode();
  virtual int getParent();  // 0: a bare node has no parent

 protected:
  const char *className() const override { return "hcNode"; }
};

// ---------------------------------------------------------------------------
class hcValue {
 public:
  enum vType : int {
    V_UNDEF = 0, V_UNSUPPLIED, V_VARIABLE, V_OP, V_IGNORE, V_NUMBER, V_MATRIX,
    V_STRING, V_DOF, V_VECTOR, V_FUNCALL, V_FIGURE, V_SEGMENT, V_LIGHT, V_SITE,
    V_JOINT, V_CONSTRAINT, V_NODE, V_EDGE, V_FACE, V_CURVE, V_PATCH,
    V_ATTRIBUTE, V_TEXTURE, V_NUMBERPTR, V_TRANSFORMPTR, V_JOINTANGLE,
    V_JOINTCOUPLE, V_DEFNODE, V_DEFEDGE, V_DEFFACE, V_DYNSTRING, V_GLYPH,
    V_SCENE
  };

  hcValue();
  hcValue(const hcValue &other);
  hcValue &operator=(const hcValue &other);
  ~hcValue();

  void nil();
  hcValue *copy();
  static void destroy(hcValue *val);
  vType getType();
  const char *getTypeName();
  const char *tessprint();

  void set(float f);
  void set(const char *s);  // copied; null clears to V_UNDEF
  void set(hcFigure *f);
  void set(hcSegment *s);
  void set(hcSite *s);
  void set(hcJoint *j);
  void set(hcMaterial *m);
  void set(hcConstraint *c);
  void set(hcTexture *t);
  void set(hcDOF *d);
  void set(hMatrix *m);  // the matrix is copied into the value
  void set(hVector *v);  // the vector is copied into the value

  // Each get writes the stored item when the kind matches and answers 1;
  // otherwise it leaves the variable alone and answers 0.
  int get(float &f);
  int get(char *&s);
  int get(hcFigure *&f);
  int get(hcSegment *&s);
  int get(hcSite *&s);
  int get(hcJoint *&j);
  int get(hcMaterial *&m);
  int get(hcConstraint *&c);
  int get(hcTexture *&t);
  int get(hcDOF *&d);
  int get(hMatrix *&m);  // copies into *m when m is not null
  int get(hVector *&v);  // copies into *v when v is not null

 private:
  vType type_ = V_UNDEF;
  float number_ = 0;
  std::string text_;
  void *pointer_ = nullptr;
  float values_[16] = {};
  std::string description_;
};

// ---------------------------------------------------------------------------
class hcPropertyList {
 public:
  struct charList : std::list<std::string> {};

  hcPropertyList();
  ~hcPropertyList();
  int get(const char *name, hcValue *value);  // 1 found (value filled), 0 not
  int set(const char *name, hcValue value);   // 1 new, 2 replaced, 0 bad name
  int remove(const char *name);               // 1 removed, 0 absent
  charList names();
  int count() const { return static_cast<int>(values_.size()); }

 private:
  std::map<std::string, hcValue> values_;
};
