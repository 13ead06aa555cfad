#include "host/gi/qagi_font_locator.h"

#include "host/svc/utf8.h"

#include <fontconfig/fontconfig.h>

#include <algorithm>
#include <map>
#include <tuple>
#include <cwctype>
#include <memory>
#include <system_error>
#include <vector>

namespace tabulon::gi {
namespace {

using svc::toUtf8;

std::string lowerAscii(std::string s) {
  std::transform(s.begin(), s.end(), s.begin(),
                 [](unsigned char c) { return static_cast<char>(std::tolower(c)); });
  return s;
}

struct PatternDeleter {
  void operator()(FcPattern* p) const { FcPatternDestroy(p); }
};
struct FontSetDeleter {
  void operator()(FcFontSet* s) const { FcFontSetDestroy(s); }
};
struct ObjectSetDeleter {
  void operator()(FcObjectSet* s) const { FcObjectSetDestroy(s); }
};
using PatternPtr = std::unique_ptr<FcPattern, PatternDeleter>;

struct InstalledFace {
  FontLocation location;
  std::string fileNameLower;              // base name of the file, lower case
};

// fontconfig's configuration, loaded once and released at exit so that leak checkers
// see nothing left behind.
class FontConfigSession {
 public:
  FontConfigSession() : config_(FcInitLoadConfigAndFonts()) { readInstalledFaces(); }
  ~FontConfigSession() {
    if (config_ != nullptr) FcConfigDestroy(config_);
  }
  FontConfigSession(const FontConfigSession&) = delete;
  FontConfigSession& operator=(const FontConfigSession&) = delete;

  FcConfig* config() const { return config_; }
  const std::vector<InstalledFace>& faces() const { return faces_; }

 private:
  void readInstalledFaces() {
    if (config_ == nullptr) return;
    PatternPtr all(FcPatternCreate());
    std::unique_ptr<FcObjectSet, ObjectSetDeleter> wanted(
        FcObjectSetBuild(FC_FILE, FC_INDEX, nullptr));
    std::unique_ptr<FcFontSet, FontSetDeleter> set(FcFontList(config_, all.get(), wanted.get()));
    if (!set) return;
    for (int i = 0; i < set->nfont; ++i) {
      FcPattern* p = set->fonts[i];
      FcChar8* file = nullptr;
      if (FcPatternGetString(p, FC_FILE, 0, &file) != FcResultMatch || file == nullptr) continue;
      InstalledFace face;
      face.location.file = reinterpret_cast<const char*>(file);
      int index = 0;
      if (FcPatternGetInteger(p, FC_INDEX, 0, &index) == FcResultMatch) face.location.faceIndex = index;
      face.fileNameLower = lowerAscii(face.location.file.filename().string());
      faces_.push_back(std::move(face));
    }
    // fontconfig's list order depends on its caches; sort so lookups are repeatable.
    std::sort(faces_.begin(), faces_.end(),
              [](const InstalledFace& a, const InstalledFace& b) { return a.location < b.location; });
  }

  FcConfig* config_ = nullptr;
  std::vector<InstalledFace> faces_;
};

const FontConfigSession& session() {
  static const FontConfigSession instance;
  return instance;
}

std::optional<FontLocation> findByFileName(const std::string& fileNameLower) {
  for (const InstalledFace& face : session().faces()) {
    if (face.fileNameLower == fileNameLower) return FontLocation{face.location.file, 0};
  }
  return std::nullopt;
}

std::optional<FontLocation> matchTypeface(const std::wstring& typeface, bool bold, bool italic);

bool isFontExtension(const std::string& extLower) {
  return extLower == ".ttf" || extLower == ".ttc" || extLower == ".otf";
}

}  // namespace

const std::filesystem::path& defaultFontFile() {
  static const std::filesystem::path file = "/usr/share/fonts/truetype/wqy/wqy-microhei.ttc";
  return file;
}

std::optional<FontLocation> defaultFontLocation() {
  std::error_code ec;
  if (std::filesystem::is_regular_file(defaultFontFile(), ec)) return FontLocation{defaultFontFile(), 0};
  // Installed elsewhere: ask fontconfig for the family.
  return locateTypeface(L"WenQuanYi Micro Hei", false, false);
}

bool isShapeFontName(const std::wstring& name) {
  if (name.size() < 4) return false;
  std::wstring ext = name.substr(name.size() - 4);
  std::transform(ext.begin(), ext.end(), ext.begin(), [](wchar_t c) { return std::towlower(c); });
  return ext == L".shx";
}

std::optional<FontLocation> locateFontFile(const std::wstring& name) {
  if (name.empty() || isShapeFontName(name)) return std::nullopt;
  const std::filesystem::path asGiven(toUtf8(name));
  std::error_code ec;
  if (std::filesystem::is_regular_file(asGiven, ec)) return FontLocation{asGiven, 0};

  // Styles often carry a Windows path or a bare file name: look for the file by name.
  const std::size_t cut = name.find_last_of(L"/\\");
  const std::wstring base = cut == std::wstring::npos ? name : name.substr(cut + 1);
  const std::size_t dot = base.rfind(L'.');
  const std::string extLower = dot == std::wstring::npos ? std::string() : lowerAscii(toUtf8(base.substr(dot)));
  const std::string baseLower = lowerAscii(toUtf8(base));
  if (isFontExtension(extLower)) {
    if (auto found = findByFileName(baseLower)) return found;
  } else {
    for (const char* ext : {".ttf", ".ttc", ".otf"}) {
      if (auto found = findByFileName(baseLower + ext)) return found;
    }
  }
  // "simhei.ttf" may be installed under its family name only.
  return locateTypeface(isFontExtension(extLower) ? base.substr(0, dot) : base, false, false);
}

std::optional<FontLocation> locateTypeface(const std::wstring& typeface, bool bold, bool italic) {
  if (typeface.empty()) return std::nullopt;
  // A match costs a fontconfig search, and long cards measure thousands of cells in the
  // same few typefaces: remember the answers for the life of the process.
  static std::map<std::tuple<std::wstring, bool, bool>, std::optional<FontLocation>> known;
  const auto key = std::make_tuple(typeface, bold, italic);
  if (const auto found = known.find(key); found != known.end()) return found->second;
  std::optional<FontLocation> location = matchTypeface(typeface, bold, italic);
  known.emplace(key, location);
  return location;
}

namespace {

std::optional<FontLocation> matchTypeface(const std::wstring& typeface, bool bold, bool italic) {
  const std::string family = toUtf8(typeface);
  const std::string familyLower = lowerAscii(family);
  const FontConfigSession& fc = session();
  if (fc.config() == nullptr) return std::nullopt;

  PatternPtr pattern(FcPatternCreate());
  FcPatternAddString(pattern.get(), FC_FAMILY, reinterpret_cast<const FcChar8*>(family.c_str()));
  FcPatternAddInteger(pattern.get(), FC_WEIGHT, bold ? FC_WEIGHT_BOLD : FC_WEIGHT_REGULAR);
  FcPatternAddInteger(pattern.get(), FC_SLANT, italic ? FC_SLANT_ITALIC : FC_SLANT_ROMAN);
  FcConfigSubstitute(fc.config(), pattern.get(), FcMatchPattern);
  FcDefaultSubstitute(pattern.get());
  FcResult result = FcResultNoMatch;
  PatternPtr match(FcFontMatch(fc.config(), pattern.get(), &result));
  if (!match) return std::nullopt;

  // fontconfig always offers its best substitute; accept it only when it bears the
  // family asked for, otherwise the caller falls back to the default font.
  bool sameFamily = false;
  FcChar8* matched = nullptr;
  for (int n = 0; FcPatternGetString(match.get(), FC_FAMILY, n, &matched) == FcResultMatch; ++n) {
    if (lowerAscii(reinterpret_cast<const char*>(matched)) == familyLower) sameFamily = true;
  }
  FcChar8* file = nullptr;
  if (!sameFamily || FcPatternGetString(match.get(), FC_FILE, 0, &file) != FcResultMatch) {
    return std::nullopt;
  }
  FontLocation location{reinterpret_cast<const char*>(file), 0};
  int index = 0;
  if (FcPatternGetInteger(match.get(), FC_INDEX, 0, &index) == FcResultMatch) location.faceIndex = index;
  return location;
}

}  // namespace

}  // namespace tabulon::gi
