#include "drawing/render/svg_writer.h"

#include <algorithm>
#include <cmath>
#include <cstdio>
#include <numbers>
#include <ostream>
#include <sstream>

#include "host/svc/utf8.h"

namespace tabulon::render {

namespace {

// A number with at most three decimals and no trailing zeros.
std::string num(double v) {
  if (std::abs(v) < 0.0005) return "0";
  char text[48];
  std::snprintf(text, sizeof text, "%.3f", v);
  std::string s = text;
  while (s.back() == '0') s.pop_back();
  if (s.back() == '.') s.pop_back();
  return s;
}

std::string escapeXml(const std::wstring& text) {
  std::string utf8 = tabulon::svc::toUtf8(text);
  std::string out;
  out.reserve(utf8.size());
  for (char c : utf8) {
    switch (c) {
      case '&': out += "&amp;"; break;
      case '<': out += "&lt;"; break;
      case '>': out += "&gt;"; break;
      case '"': out += "&quot;"; break;
      default:
        // Control characters are not allowed in XML 1.0.
        if (static_cast<unsigned char>(c) >= 0x20 || c == '\t') out += c;
        break;
    }
  }
  return out;
}

constexpr double kDegrees = 180.0 / std::numbers::pi;

void writePath(std::ostream& out, const SvgFrame& frame, const RenderPath& path) {
  out << "<path d=\"";
  for (const auto& ring : path.rings) {
    for (std::size_t i = 0; i < ring.size(); ++i)
      out << (i == 0 ? "M" : "L") << num(ring[i].x) << ' ' << num(-ring[i].y) << (i + 1 < ring.size() ? " " : "");
    if (path.closed) out << "Z";
  }
  out << '"';
  const std::string color = ToHex(path.color);
  if (path.filled) {
    out << " fill=\"" << color << "\" fill-rule=\"evenodd\" stroke=\"none\"";
  } else {
    out << " fill=\"none\" stroke=\"" << color << "\" stroke-width=\""
        << num(StrokeWidth(frame, path.lineWeight, path.width)) << '"';
  }
  out << "/>\n";
}

void writeCircle(std::ostream& out, const SvgFrame& frame, const RenderCircle& circle) {
  out << "<circle cx=\"" << num(circle.center.x) << "\" cy=\"" << num(-circle.center.y) << "\" r=\""
      << num(circle.radius) << "\" fill=\"none\" stroke=\"" << ToHex(circle.color) << "\" stroke-width=\""
      << num(StrokeWidth(frame, circle.lineWeight, 0.0)) << "\"/>\n";
}

void writeText(std::ostream& out, const RenderText& text) {
  const char* anchor = text.anchor == RenderText::Anchor::Middle ? "middle"
                       : text.anchor == RenderText::Anchor::End  ? "end"
                                                                 : "start";
  out << "<text";
  const bool plain = std::abs(text.rotation) < 1e-9 && std::abs(text.widthFactor - 1.0) < 1e-9 &&
                     std::abs(text.oblique) < 1e-9;
  if (plain) {
    out << " x=\"" << num(text.position.x) << "\" y=\"" << num(-text.position.y) << '"';
  } else {
    // SVG turns clockwise with y down; the drawing counter-clockwise with y up.
    out << " transform=\"translate(" << num(text.position.x) << ' ' << num(-text.position.y) << ')';
    if (std::abs(text.rotation) >= 1e-9) out << " rotate(" << num(-text.rotation * kDegrees) << ')';
    if (std::abs(text.oblique) >= 1e-9) out << " skewX(" << num(-text.oblique * kDegrees) << ')';
    if (std::abs(text.widthFactor - 1.0) >= 1e-9) out << " scale(" << num(text.widthFactor) << " 1)";
    out << '"';
  }
  out << " font-family=\"" << escapeXml(text.fontFamily) << "\" font-size=\"" << num(text.fontSize) << "\" fill=\""
      << ToHex(text.color) << "\" text-anchor=\"" << anchor << '"';
  if (text.fitLength > 0.0) {
    const double factor = text.widthFactor > 0.0 ? text.widthFactor : 1.0;
    out << " textLength=\"" << num(text.fitLength / factor) << "\" lengthAdjust=\"spacingAndGlyphs\"";
  }
  out << " xml:space=\"preserve\">" << escapeXml(text.text) << "</text>\n";
}

}  // namespace

SvgFrame ComputeSvgFrame(const RenderScene& scene, const SvgOptions& options) {
  SvgFrame frame;
  double minX = 0, minY = 0, maxX = 100, maxY = 100;
  if (!scene.extents.isEmpty()) {
    minX = scene.extents.minPoint().x;
    minY = scene.extents.minPoint().y;
    maxX = scene.extents.maxPoint().x;
    maxY = scene.extents.maxPoint().y;
  }
  double w = maxX - minX;
  double h = maxY - minY;
  const double longer = std::max({w, h, 1e-6});
  // A drawing that is a single line still gets some height (and width).
  if (w < longer * 0.01) {
    minX -= longer * 0.005;
    w = longer * 0.01;
  }
  if (h < longer * 0.01) {
    minY -= longer * 0.005;
    h = longer * 0.01;
  }
  const double pad = longer * options.margin;
  frame.minX = minX - pad;
  frame.minY = -(minY + h) - pad;  // y flips: the top of the drawing is the smallest SVG y
  frame.width = w + 2 * pad;
  frame.height = h + 2 * pad;
  const double perUnit = options.pixelSize / std::max(frame.width, frame.height);
  frame.pixelWidth = std::round(frame.width * perUnit);
  frame.pixelHeight = std::round(frame.height * perUnit);
  // About one pixel of the picture at its natural size.
  frame.hairline = 1.0 / perUnit;
  return frame;
}

double StrokeWidth(const SvgFrame& frame, double lineWeight, double width) {
  double stroke = frame.hairline * std::max(1.0, lineWeight / 0.25);
  return std::max(stroke, width);
}

void WriteSvg(const RenderScene& scene, std::ostream& out, const SvgOptions& options) {
  const SvgFrame frame = ComputeSvgFrame(scene, options);
  out << "<?xml version=\"1.0\" encoding=\"UTF-8\"?>\n"
      << "<svg xmlns=\"http://www.w3.org/2000/svg\" width=\"" << num(frame.pixelWidth) << "\" height=\""
      << num(frame.pixelHeight) << "\" viewBox=\"" << num(frame.minX) << ' ' << num(frame.minY) << ' '
      << num(frame.width) << ' ' << num(frame.height) << "\">\n"
      << "<rect x=\"" << num(frame.minX) << "\" y=\"" << num(frame.minY) << "\" width=\"" << num(frame.width)
      << "\" height=\"" << num(frame.height) << "\" fill=\"#ffffff\"/>\n"
      << "<g stroke-linecap=\"round\" stroke-linejoin=\"round\">\n";
  for (const auto& item : scene.items) {
    if (auto* path = std::get_if<RenderPath>(&item)) writePath(out, frame, *path);
    else if (auto* circle = std::get_if<RenderCircle>(&item)) writeCircle(out, frame, *circle);
    else if (auto* text = std::get_if<RenderText>(&item)) writeText(out, *text);
  }
  out << "</g>\n</svg>\n";
}

std::string SceneToSvg(const RenderScene& scene, const SvgOptions& options) {
  std::ostringstream out;
  WriteSvg(scene, out, options);
  return out.str();
}

}  // namespace tabulon::render
