// Host library: geometry and meshes.
//
// A geometry holds nodes (coordinates, normal, colour), faces (their nodes
// in order, a material index, a smooth-shading flag, texture coordinates when
// the file gave them) and the fields derived from them, kept current by every
// edit and by updateAllFields:
//   * edges: one per pair of nodes that follow one another in a face; tail
//     and head in the order of the first face that uses the edge, that face
//     on the left, the other on the right (-1 when there is none).  Face edge
//     k joins face vertices k and k + 1 (the last one back to the first);
//   * face normals (unit, by Newell's method) and face centres (node mean);
//   * node normals: the mean of the normals of the faces using the node,
//     unless one was given (setNodeNormal, or the file's vn lines).
// Edits renumber nodes, edges and faces densely.  Indexes out of range
// answer the failure value (-1, 0, null) and change nothing; getters with an
// output leave it untouched.
//
// Every geometry the stand-in makes is an hcMeshGeometry.  Its coordinates
// are local to the segment it is set on (hcSegment::setGeometry, the mesh's
// rigid segment), whose global frame gives the global ("deformed")
// coordinates.  A segment owns the geometry set on it: destroying the
// segment destroys it; destroying the geometry takes it off the segment.
//
// Files.  read takes a Wavefront OBJ file (v, vn, vt, f with negative
// indices, s, usemtl, mtllib) or the polygon-surface text writeToPsurf
// writes ("psurf nNodes nFaces nodeOffset", a line "x y z" per node, a line
// "count i1 i2 ..." per face, indices from nodeOffset), told apart by the
// first word; a scale vector multiplies the coordinates.  Files of another
// kind, or malformed, give null.
#pragma once

#include <list>
#include <string>
#include <utility>
#include <vector>

#include "host/core.h"

class hcFigure;
class hcSegment;
class hcMaterial;
class hcMeshInternals;
class hcLandmark;
class hcLandmarkImpl;
class hcBone;
class hcDisplayFlags;
struct sgMesh;

class hcGeometry : public hcObject {
 public:
  enum hasFlag : int {
    nodeCoords = 1, nodeNormals = 2, nodeColors = 4, nodeFaces = 8, nodeEdges = 16,
    edgeHeads = 64, edgeTails = 128, edgeLefts = 256, edgeRights = 512, edgeDisplay = 1024,
    faceVertices = 2048, faceAttributes = 8192, faceNormals = 16384, faceColors = 32768,
    faceCenters = 65536, faceEdges = 131072, faceTextures = 262144, faceDisplay = 524288,
    psurfDimensions = 1048576, faceEqns = 2097152
  };

  ~hcGeometry() override;

  // 1 when every bit of flag is held.
  virtual int hasAttribute(hasFlag flag);
  // Drops the bits of flag; answers the bits still held.
  virtual unsigned long removeAttribute(hasFlag flag);
  // The scale the file was read with (1 1 1 otherwise).
  virtual void getScaleVector(hVector *scale);
  virtual int getNumNodes();
  virtual void getNodeCoords(int nodeIndex, hVector &nodeCoords);
  virtual void getNodeNormal(int nodeIndex, hVector &nodeNormal);
  virtual void getNodeColor(int nodeIndex, hVector &nodeColor);
  virtual int getNumFaces();
  virtual void getFaceNormal(int faceIndex, hVector &faceNormal);
  virtual int getNumFaceVertices(int faceIndex);  // -1 out of range
  virtual int getNumEdges();
  virtual int getNumFaceEdges(int faceIndex);     // -1 out of range
  virtual int getFaceEdge(int faceIndex, int faceEdge);
  virtual int getFaceNode(int faceIndex, int faceVertex);
  // 1 and *u, *v (one float each) when the face has texture coordinates.
  virtual int getFaceTexCoords(int faceIndex, int faceVertex, float *u, float *v);
  virtual int getFaceSmoothShade(int faceIndex);
  virtual int getNumMaterials();
  virtual hcMaterial *getMaterial(int i);
  virtual int getFaceMaterial(int faceIndex);
  virtual int getFaceCenter(int face, hVector &v);  // 1, or 0 out of range
  virtual void updateAllFields();
  // Registers the materials of the file's material library not yet known.
  virtual void loadMaterials();
  virtual const char *getFileName();  // the path read; empty otherwise
  virtual int getEdgeHead(int edge);
  virtual int getEdgeTail(int edge);
  virtual int getEdgeLeft(int edge);
  virtual int getEdgeRight(int edge);
  virtual int bbox(float model[4][4], float *min, float *max, int extend = 0);
  // The box of the nodes moved by model (as hVector::xform does) into min
  // and max (3 floats each); with extend, grown from the box they hold.
  // 0, and nothing written, without nodes.
  virtual int bbox(hMatrix model, float *min, float *max, int extend = 0);
  virtual void setNodeLocation(int node, hVector &vec);
  // A node used by a face is deleted only with deletefaces (its faces go
  // too).  1 on success, 0 otherwise.
  virtual int deleteNode(int n, int deletefaces);
  virtual int deleteEdge(int e);  // deletes the faces using it
  virtual int deleteFace(int f);
  virtual int createNode();       // a new node at the origin; its index
  // A face through the nodes whose indexes the list holds (as integers
  // stored in the data pointers); its index, or -1.
  virtual int createFace(hList *nodeList);
  virtual int reverseFace(int f);
  virtual int saveToArchive(const char *saveID, const char *archiveID, int flags = 0);  // 0: no archives

  // Materials of faces (used by the segment's material operations): the
  // material joins the geometry's list when new.  setFaceMaterial answers
  // 1, or 0 for a bad face or a null material; face -1 sets every face.
  int setFaceMaterial(int face, hcMaterial *material);
  int replaceMaterial(hcMaterial *replaced, hcMaterial *with);  // faces changed
  bool usesMaterial(const hcMaterial *material);
  // Writes the geometry as OBJ text into obj and its materials as MTL into
  // mtl (named mtlName in the OBJ), nodes moved by frame.
  void writeObj(std::string &obj, std::string &mtl, const std::string &mtlName, const hMatrix &frame);

  // A figure newName with one segment newName bearing the geometry read.
  static hcFigure *readFromFile(const char *fileName, const char *newName);
  static hcGeometry *read(const char *fileName, hVector *scale = nullptr);

 protected:
  struct Node {
    hVector coords, normal, color{0.8f, 0.8f, 0.8f};
    bool normalGiven = false;
  };
  struct Face {
    std::vector<int> nodes;
    std::vector<float> u, v;  // empty without texture coordinates
    int material = 0;
    int smooth = 0;
    std::vector<int> edges;
    hVector normal, center;
  };
  struct Edge {
    int tail, head, left, right;
  };

  hcGeometry();
  void rebuild();  // edges, normals, centres
  bool validNode(int n) const { return n >= 0 && n < static_cast<int>(nodes_.size()); }
  bool validFace(int f) const { return f >= 0 && f < static_cast<int>(faces_.size()); }
  bool validEdge(int e) const { return e >= 0 && e < static_cast<int>(edges_.size()); }
  int boxOf(const hMatrix &model, const hMatrix *frame, float *min, float *max, int extend);

  friend class hcMeshInternals;
  friend struct GeometryFile;
  std::vector<Node> nodes_;
  std::vector<Face> faces_;
  std::vector<Edge> edges_;
  std::vector<hcMaterial *> materials_;
  std::vector<std::string> materialNames_;  // usemtl names, by material index
  std::string fileName_, materialLibrary_;
  hVector scale_{1, 1, 1};
  unsigned long attributes_ = 0;
};

class hcMeshGeometry : public hcGeometry {
 public:
  hcMeshInternals *m_meshInternals = nullptr;

  // nVertices nodes at the origin and nFaces faces without nodes (negative
  // counts: none); parent is the figure the mesh belongs to.
  hcMeshGeometry(int nVertices, int nFaces, int hasTexCoords, hcFigure *parent);
  ~hcMeshGeometry() override;

  // Writes the polygon-surface text; faces of area at most discardTolerance
  // are left out.
  void writeToPsurf(const char *filename, int nodeOffset = 1, float discardTolerance = 0.00005f);
  hcSegment *getRigidSegment();
  // The global frame of the rigid segment when the mesh was set on it.
  void getInitialState(hMatrix &m);
  // Node index's global coordinates and normal: for a vertex rigged to the
  // bones recorded by constructExtInfo, the weighted blend of its
  // influences, each carrying the rest coordinates from the frame its bone
  // had when rigged into the bone's frame now; otherwise through the rigid
  // segment.
  void getDeformedNodeCoords(int index, hVector *coords, hVector *normals);
  // Node 0's, as getDeformedNodeCoords: a script holds single vectors.
  void getDeformedCoords(hVector *coords, hVector *normals);
  hcMeshInternals *getMeshInternals();
  sgMesh *getSG();
  int getNumLandmarks();
  hcLandmark *getLandmark(int i);
  hcFigure *getFigure();
  // Records the root frame and the bones up to the first null one (at most
  // 64 are read).
  void constructExtInfo(hMatrix figRoot, hcBone **boneArray);
  int getNBones();
  int convertBoneIndex(int globalIndex);  // -1 outside the recorded bones
  // Up to 4 influences: fill bones (ints) or weights (floats) and answer
  // the count; 0 without rigging.
  int getVertexBones(int i, int *bones);
  int getVertexWeights(int i, float *bones);
  void setNodeNormal(int node, hVector &vec);
  void setVisibility(int on);
  void getUndeformedNodeCoords(int nodeIndex, hVector &nodeCoords);
  // As hcGeometry::bbox; with global, the nodes are first moved into the
  // world by the rigid segment's frame.
  int bbox(int global, hMatrix model, float *min, float *max, int extend = 0);
  using hcGeometry::bbox;
  hcMaterial *getMaterial(int i = 0) override;

  // Called by hcSegment::setGeometry.
  void setRigidSegment(hcSegment *segment);

 private:
  friend class hcMeshInternals;
  friend class hcGeometry;
  bool blend(int index, hVector *coords, hVector *normals);
  hcFigure *figure_ = nullptr;
  hcSegment *segment_ = nullptr;
  hMatrix initial_;
  hMatrix extRoot_;
  std::vector<hcBone *> bones_;
  int visible_ = 1;
};

// The rigging behind one mesh: up to 4 bone influences per vertex (bone
// index, weight, offset, frame), rest normals, neighbouring meshes and the
// vertices shared with them, landmarks and vertex-to-face tables.
class hcMeshInternals {
 public:
  struct intList : std::list<int> {};
  struct meshList : std::list<hcMeshGeometry *> {};
  struct landmarkList : std::list<hcLandmarkImpl *> {};
  static constexpr int kInfluences = 4;

  // The internals of m (which then holds them in m_meshInternals); they
  // belong to their maker, and forget m when it is destroyed.
  explicit hcMeshInternals(hcMeshGeometry *m);
  ~hcMeshInternals();

  hcDisplayFlags *getDisplayFlags();
  void setNeighbors(meshList neighbors);
  int getNNeighbors();
  hcMeshGeometry *getNeighbor(int i);
  // The vertices of this mesh and of neighbour neighborID that lie at the
  // same place (within hcSmoothSkin::s_seamVertexEpsilon, 1e-5 unless
  // set), appended pairwise to the two lists.
  void getSharedVertices(int neighborID, intList &thisMesh, intList &neighborMesh);
  // Moves every shared vertex of the neighbours onto this mesh's.
  void synchroniseBoundaries();
  // Drops neighbours that are gone or are this mesh.
  void validateSharedVertices();
  void setLandmarkRefs(landmarkList l);
  hcLandmarkImpl *getLandmark(int i);
  int getNumLandmarks();
  int getVertexBones(int i, int *bones);
  int getVertexWeights(int i, float *bones);
  int getVertexOffsets(int i, hVector &v0, hVector &v1, hVector &v2, hVector &v3);
  int getVertexFrames(int i, hMatrix &m0, hMatrix &m1, hMatrix &m2, hMatrix &m3);
  int getVertexRestNormal(int i, hVector &m);  // 1, or 0 out of range
  void resetRigInfo(int vertID);
  void setRigInfo(int vertID, int influenceID, int boneIndex, float weight, hMatrix boneGlobal,
                  hVector restNormal, hVector restOffset);
  static void copyRigInfo(hcMeshGeometry *m_target, int v_target, hcMeshGeometry *m_source, int v_source);
  static void copyWeightInfo(hcMeshGeometry *m_target, int v_target, hcMeshGeometry *m_source, int v_source);
  // Zero weights are dropped and the rest normalised to sum 1; negative
  // weights, or none left, change nothing.
  static void setWeights(hcMeshGeometry *pMesh, int vertexID, int b0, int b1, int b2, int b3, float f0, float f1,
                         float f2, float f3);
  void recomputeNormals();
  void freeVertex2Faces();
  int getNVertex2Faces(int vertexID);
  void getVertex2Faces(int vertexID, intList &faceList);
  int getNSegments();  // the rigid segment, when there is one
  hcSegment *getSegment(int i);

 private:
  struct Influence {
    int bone = -1;
    float weight = 0;
    hVector offset;
    hMatrix frame;
  };
  struct Vertex {
    Influence in[kInfluences];
    int count = 0;
    hVector restNormal;
  };
  Vertex *vertex(int i);
  static void compact(Vertex &v);
  // The source vertex and the target vertex of a copy (null when absent).
  static std::pair<Vertex *, Vertex *> vertexPair(hcMeshGeometry *m_target, int v_target, hcMeshGeometry *m_source,
                                                  int v_source);

  friend class hcMeshGeometry;
  hcMeshGeometry *mesh_;
  std::vector<Vertex> vertices_;
  std::vector<hcMeshGeometry *> neighbors_;
  std::vector<hcLandmarkImpl *> landmarks_;
  std::vector<std::vector<int>> vertex2faces_;
  hcDisplayFlags *flags_;
};
