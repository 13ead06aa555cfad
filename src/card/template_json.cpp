#include "card/template_json.h"

#include <climits>
#include <cmath>
#include <nlohmann/json.hpp>

#include "card/utf8_text.h"

using nlohmann::json;

namespace {

// A field that cannot be read: where it is and what is wrong.
struct FieldError {
  std::string field;
  std::string message;
};

std::string TypeName(const json& value) { return value.type_name(); }

std::string Join(const std::string& parent, const std::string& key) {
  return parent.empty() ? key : parent + "." + key;
}

std::string Index(const std::string& parent, size_t i) { return parent + "[" + std::to_string(i) + "]"; }

// Reads the fields of one JSON object, naming each field by its full path.
class ObjectReader {
 public:
  ObjectReader(const json& value, std::string where) : value_(value), where_(std::move(where)) {
    if (!value_.is_object()) throw FieldError{where_.empty() ? "(top level)" : where_, "expected an object, found " + TypeName(value_)};
  }

  const json* Find(const char* key) const {
    auto it = value_.find(key);
    return it == value_.end() ? nullptr : &*it;
  }

  std::string Where(const char* key) const { return Join(where_, key); }

  void Text(const char* key, std::wstring& out) const {
    if (const json* v = Find(key)) out = AsText(*v, Where(key));
  }

  void Number(const char* key, double& out) const {
    const json* v = Find(key);
    if (!v) return;
    if (!v->is_number()) throw FieldError{Where(key), "expected a number, found " + TypeName(*v)};
    out = v->get<double>();
  }

  void Integer(const char* key, int& out) const {
    const json* v = Find(key);
    if (!v) return;
    if (!v->is_number_integer()) throw FieldError{Where(key), "expected an integer, found " + TypeName(*v)};
    const auto wide = v->get<long long>();
    if (v->is_number_unsigned() ? v->get<unsigned long long>() > INT_MAX : (wide < INT_MIN || wide > INT_MAX)) {
      throw FieldError{Where(key), "integer out of range"};
    }
    out = static_cast<int>(wide);
  }

  static std::wstring AsText(const json& v, const std::string& where) {
    if (!v.is_string()) throw FieldError{where, "expected a string, found " + TypeName(v)};
    return KrmFromUtf8(v.get_ref<const std::string&>());
  }

  const json& Array(const char* key) const {
    const json& v = *Find(key);
    if (!v.is_array()) throw FieldError{Where(key), "expected an array, found " + TypeName(v)};
    return v;
  }

 private:
  const json& value_;
  std::string where_;
};

void CheckFormat(const ObjectReader& top, const char* expected) {
  const json* format = top.Find("format");
  if (!format) throw FieldError{"format", std::string("missing; expected \"") + expected + "\""};
  if (!format->is_string()) throw FieldError{"format", "expected a string, found " + TypeName(*format)};
  if (format->get_ref<const std::string&>() != expected) {
    throw FieldError{"format", "is \"" + format->get<std::string>() + "\", expected \"" + expected + "\""};
  }
  const json* version = top.Find("version");
  if (!version) throw FieldError{"version", "missing"};
  if (!version->is_number_integer()) throw FieldError{"version", "expected an integer, found " + TypeName(*version)};
  if (version->get<long long>() != kKrmTemplateFormatVersion) {
    throw FieldError{"version", "unsupported version " + version->dump() + ", this program reads version " +
                                    std::to_string(kKrmTemplateFormatVersion)};
  }
}

std::vector<std::wstring> TextList(const json& v, const std::string& where) {
  if (!v.is_array()) throw FieldError{where, "expected an array, found " + TypeName(v)};
  std::vector<std::wstring> out;
  for (size_t i = 0; i < v.size(); ++i) out.push_back(ObjectReader::AsText(v[i], Index(where, i)));
  return out;
}

KrmTextListMap TextListMap(const ObjectReader& parent, const char* key) {
  KrmTextListMap out;
  const json* v = parent.Find(key);
  if (!v) return out;
  const std::string where = parent.Where(key);
  if (!v->is_object()) throw FieldError{where, "expected an object, found " + TypeName(*v)};
  for (auto it = v->begin(); it != v->end(); ++it) {
    out[KrmFromUtf8(it.key())] = TextList(it.value(), Join(where, it.key()));
  }
  return out;
}

KrmAttSet ReadAtt(const json& v, const std::string& where) {
  const ObjectReader in(v, where);
  KrmAttSet att;
  std::wstring text;
  int number = 0;
  double real = 0.0;
  const auto textField = [&](const char* key, void (KrmAttSet::*set)(const std::wstring&)) {
    text.clear();
    in.Text(key, text);
    (att.*set)(text);
  };
  textField("showName", &KrmAttSet::SetShowName);
  textField("inName", &KrmAttSet::SetInName);
  textField("stringType", &KrmAttSet::SetStringType);
  in.Integer("decimals", number);
  att.SetDecimalNum(number);
  textField("alignType", &KrmAttSet::SetAlignType);
  textField("rowType", &KrmAttSet::SetRowType);
  textField("attDir", &KrmAttSet::SetAttDir);
  textField("canEdit", &KrmAttSet::SetCanEdit);
  textField("ctrType", &KrmAttSet::SetCtrType);
  textField("ctrContent", &KrmAttSet::SetCtrContent);
  textField("default", &KrmAttSet::SetDefault);
  textField("calc", &KrmAttSet::SetCalc);
  textField("showType", &KrmAttSet::SetShowType);
  in.Number("width", real);
  att.SetWidth(real);
  real = 0.0;
  in.Number("height", real);
  att.SetHeight(real);
  textField("content", &KrmAttSet::SetContent);
  return att;
}

std::vector<KrmBlockSet> ReadBlocks(const ObjectReader& top, const char* key) {
  std::vector<KrmBlockSet> out;
  if (!top.Find(key)) return out;
  const json& list = top.Array(key);
  for (size_t i = 0; i < list.size(); ++i) {
    const std::string where = Index(key, i);
    const ObjectReader block(list[i], where);
    std::wstring name;
    block.Text("name", name);
    std::vector<KrmAttSet> atts;
    if (block.Find("attributes")) {
      const json& attList = block.Array("attributes");
      for (size_t j = 0; j < attList.size(); ++j) atts.push_back(ReadAtt(attList[j], Index(block.Where("attributes"), j)));
    }
    out.emplace_back(name, atts);
  }
  return out;
}

// The 1-based line of byte `offset` of `text`.
std::size_t LineAt(std::string_view text, std::size_t offset) {
  offset = std::min(offset, text.size());
  return 1 + static_cast<std::size_t>(std::count(text.begin(), text.begin() + static_cast<std::ptrdiff_t>(offset), '\n'));
}

// Parses text and runs `read` on the top object, turning every failure into an error.
template <typename Read>
tabulon::Status ParseWith(std::string_view text, Read read) {
  json top;
  try {
    top = json::parse(text.begin(), text.end());
  } catch (const json::exception& e) {  // bad syntax, or a number too large for any type
    std::string what = e.what();
    if (auto close = what.find("] "); what.rfind("[json.exception", 0) == 0 && close != std::string::npos) {
      what.erase(0, close + 2);
    }
    tabulon::Error error = tabulon::MakeError("not valid JSON: " + what);
    // The parser counts bytes up to and including the one it stumbled on.
    if (const auto* parse = dynamic_cast<const json::parse_error*>(&e); parse && parse->byte > 0)
      error.atLine(LineAt(text, parse->byte - 1));
    return error;
  }
  try {
    read(top);
  } catch (const FieldError& e) {
    return tabulon::MakeError(e.message).inField(e.field);
  }
  return tabulon::Status::Ok();
}

// ---- writing ----

void RequireFinite(double value, const std::string& field) {
  if (!std::isfinite(value)) throw FieldError{field, "is not a finite number and cannot be written"};
}

json TextListJson(const std::vector<std::wstring>& list) {
  json out = json::array();
  for (const auto& item : list) out.push_back(KrmToUtf8(item));
  return out;
}

json TextListMapJson(const KrmTextListMap& map) {
  json out = json::object();
  for (const auto& [key, list] : map) out[KrmToUtf8(key)] = TextListJson(list);
  return out;
}

json AttJson(const KrmAttSet& att, const std::string& where) {
  RequireFinite(att.GetWidth(), Join(where, "width"));
  RequireFinite(att.GetHeight(), Join(where, "height"));
  return json{{"showName", KrmToUtf8(att.GetShowName())},   {"inName", KrmToUtf8(att.GetInName())},
              {"stringType", KrmToUtf8(att.GetStringType())}, {"decimals", att.GetDecimalNum()},
              {"alignType", KrmToUtf8(att.GetAlignType())},   {"rowType", KrmToUtf8(att.GetRowType())},
              {"attDir", KrmToUtf8(att.GetAttDir())},         {"canEdit", KrmToUtf8(att.GetCanEdit())},
              {"ctrType", KrmToUtf8(att.GetCtrType())},       {"ctrContent", KrmToUtf8(att.GetCtrContent())},
              {"default", KrmToUtf8(att.GetDefault())},       {"calc", KrmToUtf8(att.GetCalc())},
              {"showType", KrmToUtf8(att.GetShowType())},     {"width", att.GetWidth()},
              {"height", att.GetHeight()},                    {"content", KrmToUtf8(att.GetContent())}};
}

json BlocksJson(const std::vector<KrmBlockSet>& blocks, const char* key) {
  json out = json::array();
  for (size_t i = 0; i < blocks.size(); ++i) {
    json atts = json::array();
    const auto& list = blocks[i].Atts();
    for (size_t j = 0; j < list.size(); ++j) atts.push_back(AttJson(list[j], Index(Index(key, i) + ".attributes", j)));
    out.push_back(json{{"name", KrmToUtf8(blocks[i].GetBlockName())}, {"attributes", std::move(atts)}});
  }
  return out;
}

template <typename Build>
tabulon::Result<std::string> DumpWith(Build build) {
  try {
    return build().dump(2) + "\n";
  } catch (const FieldError& e) {
    return tabulon::MakeError(e.message).inField(e.field);
  }
}

}  // namespace

tabulon::Result<std::string> KrmTableToJson(const KrmTableAttributes& table) {
  return DumpWith([&] {
    RequireFinite(table.getWidth(), "width");
    RequireFinite(table.getHeight(), "height");
    json top;
    top["format"] = kKrmTableFormat;
    top["version"] = kKrmTemplateFormatVersion;
    top["id"] = KrmToUtf8(table.getID());
    top["fileName"] = KrmToUtf8(table.getFileName());
    top["showName"] = KrmToUtf8(table.getShowName());
    top["pageBase"] = KrmToUtf8(table.getPageBase());
    top["width"] = table.getWidth();
    top["height"] = table.getHeight();
    top["singleBlocks"] = BlocksJson(table.SCells(), "singleBlocks");
    top["multiBlocks"] = BlocksJson(table.MCells(), "multiBlocks");
    top["pageAttributes"] = TextListMapJson(table.PageAtt());
    top["multiDirections"] = TextListMapJson(table.MDirType());
    return top;
  });
}

tabulon::Result<std::string> KrmCardToJson(const KrmCardAttributes& card) {
  return DumpWith([&] {
    KrmCardDir dir;
    card.getCardDir(dir);
    RequireFinite(dir.GetHor(), "arrangement.hor");
    RequireFinite(dir.GetVer(), "arrangement.ver");
    json top;
    top["format"] = kKrmCardFormat;
    top["version"] = kKrmTemplateFormatVersion;
    top["id"] = KrmToUtf8(card.getID());
    top["fileName"] = KrmToUtf8(card.getFileName());
    top["showName"] = KrmToUtf8(card.getShowName());
    top["tables"] = TextListJson(card.TblFiles());
    top["arrangement"] = json{{"hor", dir.GetHor()},       {"ver", dir.GetVer()},        {"dir", dir.GetDir()},
                              {"firstType", dir.GetFstT()}, {"firstCount", dir.GetFstN()}};
    return top;
  });
}

tabulon::Status KrmTableFromJson(std::string_view text, KrmTableAttributes& out) {
  KrmTableAttributes table;
  tabulon::Status status = ParseWith(text, [&](const json& value) {
    const ObjectReader top(value, "");
    CheckFormat(top, kKrmTableFormat);
    std::wstring id = table.getID(), fileName, showName, pageBase;
    top.Text("id", id);
    top.Text("fileName", fileName);
    top.Text("showName", showName);
    top.Text("pageBase", pageBase);
    double width = 0.0, height = 0.0;
    top.Number("width", width);
    top.Number("height", height);
    table.setID(id);
    table.setTblName(fileName, showName);
    table.setPageBase(pageBase);
    table.setWidth(width);
    table.setHeight(height);
    table.setSCell(ReadBlocks(top, "singleBlocks"));
    table.setMCell(ReadBlocks(top, "multiBlocks"));
    table.setPageAtt(TextListMap(top, "pageAttributes"));
    table.setMDirType(TextListMap(top, "multiDirections"));
  });
  if (status.ok()) out = std::move(table);
  return status;
}

tabulon::Status KrmCardFromJson(std::string_view text, KrmCardAttributes& out) {
  KrmCardAttributes card;
  tabulon::Status status = ParseWith(text, [&](const json& value) {
    const ObjectReader top(value, "");
    CheckFormat(top, kKrmCardFormat);
    std::wstring id = card.getID(), fileName, showName;
    top.Text("id", id);
    top.Text("fileName", fileName);
    top.Text("showName", showName);
    card.setID(id);
    card.setCardName(fileName, showName);
    if (top.Find("tables")) {
      for (const auto& name : TextList(top.Array("tables"), "tables")) card.addTblFile(name);
    }
    KrmCardDir dir;
    if (top.Find("arrangement")) {
      const ObjectReader arrangement(*top.Find("arrangement"), "arrangement");
      double hor = dir.GetHor(), ver = dir.GetVer();
      int direction = dir.GetDir(), fstT = dir.GetFstT(), fstN = dir.GetFstN();
      arrangement.Number("hor", hor);
      arrangement.Number("ver", ver);
      arrangement.Integer("dir", direction);
      arrangement.Integer("firstType", fstT);
      arrangement.Integer("firstCount", fstN);
      dir.SetHor(hor);
      dir.SetVer(ver);
      dir.SetDir(direction);
      dir.SetFstT(fstT);
      dir.SetFstN(fstN);
    }
    card.setCardDir(dir);
  });
  if (status.ok()) out = std::move(card);
  return status;
}
