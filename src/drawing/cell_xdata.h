// The item list of one application's extended data on an object. Items are addressed
// by number: on the object each is stored as a pair, a 1071 integer holding the item
// number followed by one value (1000 string, 1071 integer, 1040 real). Lists written by
// other tools without item numbers are read too: there item n is the n-th value.
// A plain value; the database pointer is not owned and must outlive the object.
#pragma once

#include <string>
#include <utility>
#include <vector>

#include "host/db/qa_error_status.h"
#include "host/db/qadb_xdata.h"

class QaDbDatabase;
class QaDbObject;

class KR_QRXAppXdata {
 public:
  // An empty item list for `appName`; `database` (may be null) gets the name registered
  // when the list is written.
  KR_QRXAppXdata(const std::wstring& appName, QaDbDatabase* database = nullptr);

  const std::wstring& appName() const { return appName_; }

  // Replaces the list by the application's extended data of `object`. Returns whether
  // the object carries the application at all (an application without items counts).
  bool getXdata(const QaDbObject* object);
  // Writes the list, numbered, as the application's data of `object`, which must be open
  // for write; an empty list leaves the application with no items.
  Qa::ErrorStatus setXdata(QaDbObject* object) const;
  // Writes the values alone, in item-number order, the way outside tools store plain
  // lists; a gap in the numbers is filled with an empty string.
  Qa::ErrorStatus setXdataPlain(QaDbObject* object) const;

  // The string of item `item`; false and `out` unchanged when it is absent or holds no
  // string. With `convert` an integer or real item is given as its decimal text.
  bool getString(int item, std::wstring& out, bool convert = false) const;
  // The integer of item `item`; false and `out` unchanged when absent or of another
  // type. With `convert` a string holding a whole decimal number is read too.
  bool getInteger(int item, int& out, bool convert = false) const;
  // The real of item `item`; with `convert` integers and decimal strings are read too.
  bool getReal(int item, double& out, bool convert = false) const;

  // Set the value of an item, replacing an existing one in its place or appending.
  void setString(int item, const std::wstring& text);
  void setInteger(int item, int value);
  void setReal(int item, double value);

  bool hasItem(int item) const;
  int itemCount() const { return static_cast<int>(items_.size()); }
  // Item numbers in list order.
  std::vector<int> itemNumbers() const;
  void clear() { items_.clear(); }

  // The numbered encoding of the list, as stored on an object.
  std::vector<QaDbXDataItem> encode() const;
  // Reads a stored list: numbered when it consists of pairs each led by a 1071 integer,
  // else plain (control items "{" "}" are no values and are skipped). Of two entries
  // with the same number the later counts.
  static std::vector<std::pair<int, QaDbXDataItem>> decode(const std::vector<QaDbXDataItem>& stored);

 private:
  void set(int item, QaDbXDataItem value);
  const QaDbXDataItem* find(int item) const;

  std::wstring appName_;
  QaDbDatabase* database_;
  std::vector<std::pair<int, QaDbXDataItem>> items_;
};
