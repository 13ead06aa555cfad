#include "host/dxf/dxf_xdata.h"

#include <stdexcept>

namespace tabulon::dxf {

namespace {

int hexValue(char c) {
  if (c >= '0' && c <= '9') return c - '0';
  if (c >= 'a' && c <= 'f') return c - 'a' + 10;
  if (c >= 'A' && c <= 'F') return c - 'A' + 10;
  return -1;
}

std::vector<std::uint8_t> hexBytes(std::string_view text) {
  text = dxfTrim(text);
  std::vector<std::uint8_t> out;
  out.reserve(text.size() / 2);
  for (std::size_t i = 0; i + 1 < text.size(); i += 2) {
    int hi = hexValue(text[i]), lo = hexValue(text[i + 1]);
    if (hi < 0 || lo < 0) break;
    out.push_back(static_cast<std::uint8_t>(hi * 16 + lo));
  }
  return out;
}

}  // namespace

QaDbXData dxfReadXData(const DxfReadContext& ctx, std::span<const DxfTag> tags, std::size_t begin) {
  QaDbXData xdata;
  QaDbXDataApp* app = nullptr;
  for (std::size_t i = begin; i < tags.size(); ++i) {
    const DxfTag& t = tags[i];
    const int c = t.code;
    if (c == 1001) {
      xdata.push_back(QaDbXDataApp{ctx.text(t), {}});
      app = &xdata.back();
      continue;
    }
    if (!app) continue;
    try {
      if (c == 1000 || c == 1002 || c == 1003) {
        app->items.emplace_back(c, ctx.text(t));
      } else if (c == 1004) {
        app->items.emplace_back(c, hexBytes(t.value));
      } else if (c == 1005) {
        app->items.emplace_back(c, QaDbHandle(dxfParseHandle(t.value).value_or(0)));
      } else if (c >= 1010 && c <= 1013) {
        QaGePoint3d p;
        p.x = ctx.real(t);
        if (i + 1 < tags.size() && tags[i + 1].code == c + 10) p.y = ctx.real(tags[++i]);
        if (i + 1 < tags.size() && tags[i + 1].code == c + 20) p.z = ctx.real(tags[++i]);
        app->items.emplace_back(c, p);
      } else if (c >= 1040 && c <= 1042) {
        app->items.emplace_back(c, ctx.real(t));
      } else if (c == 1070 || c == 1071) {
        app->items.emplace_back(c, static_cast<std::int32_t>(ctx.integer(t)));
      } else if (c != 999) {
        ctx.audit().add(t.line, "group code " + std::to_string(c) + " in the extended data of \"" +
                                    std::string(ctx.codec().encode(app->appName)) + "\" is not an extended data code; kept in the file only");
      }
    } catch (const std::invalid_argument&) {
      ctx.audit().add(t.line, "extended data value of group code " + std::to_string(c) + " not understood");
    }
  }
  return xdata;
}

void dxfWriteXData(DxfTagWriter& w, const DxfTextCodec& codec, const QaDbXData& xdata) {
  static const char* hex = "0123456789ABCDEF";
  for (const auto& app : xdata) {
    w.write(1001, codec.encode(app.appName));
    for (const auto& item : app.items) {
      const int c = item.code();
      const auto& v = item.value();
      if (const auto* s = std::get_if<std::wstring>(&v)) {
        w.write(c, codec.encode(*s));
      } else if (const auto* d = std::get_if<double>(&v)) {
        w.writeDouble(c, *d);
      } else if (const auto* n = std::get_if<std::int32_t>(&v)) {
        w.writeInt(c, *n);
      } else if (const auto* p = std::get_if<QaGePoint3d>(&v)) {
        w.writePoint(c, p->x, p->y, p->z);
      } else if (const auto* b = std::get_if<std::vector<std::uint8_t>>(&v)) {
        std::string text;
        for (std::uint8_t byte : *b) {
          text += hex[byte >> 4];
          text += hex[byte & 15];
        }
        w.write(c, text);
      } else if (const auto* h = std::get_if<QaDbHandle>(&v)) {
        w.writeHandle(c, h->value());
      }
    }
  }
}

}  // namespace tabulon::dxf
