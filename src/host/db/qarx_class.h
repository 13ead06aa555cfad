// Run-time class information of database objects: every class has one QaRxClass
// (`desc()`), every object answers `isA()`, and `T::cast(obj)` is a checked down-cast
// that gives nullptr for an object of another class.
#pragma once

#include <string>

class QaRxClass {
 public:
  // `parent` is the class derived from, nullptr for the root; `dxfName` the drawing
  // format's type name ("INSERT"), empty for abstract classes.
  QaRxClass(const wchar_t* name, const QaRxClass* parent, const wchar_t* dxfName);
  QaRxClass(const QaRxClass&) = delete;
  QaRxClass& operator=(const QaRxClass&) = delete;

  const std::wstring& name() const { return name_; }
  const std::wstring& dxfName() const { return dxfName_; }
  const QaRxClass* myParent() const { return parent_; }
  // True when this class is `other` or derives from it. Constant time: every class
  // knows its ancestors by depth.
  bool isDerivedFrom(const QaRxClass* other) const {
    return other != nullptr && other->depth_ <= depth_ && (other->depth_ < kMaxDepth ? ancestors_[other->depth_] == other
                                                                 : isDerivedFromSlow(other));
  }

 private:
  static constexpr int kMaxDepth = 8;
  bool isDerivedFromSlow(const QaRxClass* other) const;

  std::wstring name_;
  std::wstring dxfName_;
  const QaRxClass* parent_;
  int depth_ = 0;                                // 0 for the root
  const QaRxClass* ancestors_[kMaxDepth] = {};   // by depth, this class at depth_
};

class QaRxObject {
 public:
  virtual ~QaRxObject() = default;
  static const QaRxClass* desc();
  virtual const QaRxClass* isA() const { return desc(); }
  bool isKindOf(const QaRxClass* cls) const { return isA()->isDerivedFrom(cls); }
  static QaRxObject* cast(QaRxObject* o) { return o; }
  static const QaRxObject* cast(const QaRxObject* o) { return o; }
};

// In a class body: declares desc(), isA() and cast().
#define QARX_DECLARE_MEMBERS(CLASS)                                                          \
 public:                                                                                     \
  static const QaRxClass* desc();                                                            \
  const QaRxClass* isA() const override { return desc(); }                                  \
  static CLASS* cast(QaRxObject* o) { return o && o->isKindOf(desc()) ? static_cast<CLASS*>(o) : nullptr; } \
  static const CLASS* cast(const QaRxObject* o) {                                            \
    return o && o->isKindOf(desc()) ? static_cast<const CLASS*>(o) : nullptr;                \
  }

// In a .cpp: defines desc() of CLASS derived from PARENT with the given type name.
#define QARX_DEFINE_MEMBERS(CLASS, PARENT, DXFNAME)                \
  const QaRxClass* CLASS::desc() {                                 \
    static const QaRxClass cls(L## #CLASS, PARENT::desc(), DXFNAME); \
    return &cls;                                                   \
  }

// Checked down-cast for any class with QARX_DECLARE_MEMBERS.
template <class T>
T* qaCast(QaRxObject* o) { return T::cast(o); }
template <class T>
const T* qaCast(const QaRxObject* o) { return T::cast(o); }
