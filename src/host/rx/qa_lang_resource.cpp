#include "host/rx/qa_lang_resource.h"

#include "host/svc/tabulon_paths.h"

#include <system_error>


namespace fs = std::filesystem;

namespace {

const QaLangResource* g_currentResource = nullptr;

fs::path runningProgram() {
  std::error_code ec;
  auto exe = fs::read_symlink("/proc/self/exe", ec);
  return ec ? fs::path() : exe;
}

}  // namespace

QaLangResource::QaLangResource(std::string moduleName, std::string locale, fs::path file, QaStringTable table)
    : moduleName_(std::move(moduleName)), locale_(std::move(locale)), file_(std::move(file)), strings_(std::move(table)) {}

std::vector<fs::path> qaStringTableFolders() {
  std::vector<fs::path> folders;
  if (auto exe = runningProgram(); !exe.empty()) {
    const auto bin = exe.parent_path();
    folders.push_back(bin.parent_path() / "share" / "tabulon" / "strings");
    folders.push_back(bin / "resources" / "strings");
  }
#ifdef TABULON_RESOURCE_DIR
  folders.push_back(fs::path(TABULON_RESOURCE_DIR) / "strings");
#endif
  return folders;
}

std::optional<fs::path> qaFindStringTable(const std::string& locale) {
  if (locale.empty()) return std::nullopt;
  std::vector<std::string> names{locale};
  if (auto cut = locale.find('_'); cut != std::string::npos) names.push_back(locale.substr(0, cut));
  std::error_code ec;
  for (const auto& folder : qaStringTableFolders()) {
    for (const auto& name : names) {
      auto candidate = folder / (name + ".ini");
      if (fs::is_regular_file(candidate, ec)) return candidate;
    }
  }
  return std::nullopt;
}

std::unique_ptr<QaLangResource> loadLangResourceDLL(const std::string& moduleName, const std::string& locale, int flag) {
  std::string chosen = locale;
  auto file = qaFindStringTable(chosen);
  if (!file && flag != 0 && chosen != "zh_CN") {
    chosen = "zh_CN";
    file = qaFindStringTable(chosen);
  }
  if (!file) return nullptr;
  return std::make_unique<QaLangResource>(moduleName, chosen, *file, QaStringTable::load(*file));
}

std::unique_ptr<QaLangResource> loadLangResourceDLL(const std::string& moduleName, int flag) {
  return loadLangResourceDLL(moduleName, tabulon::svc::configuredLocale(), flag);
}

void freeLangResourceDLL(std::unique_ptr<QaLangResource>& handle) {
  if (g_currentResource == handle.get()) g_currentResource = nullptr;
  handle.reset();
}

const QaLangResource* qaResourceHandle() { return g_currentResource; }

void qaSetResourceHandle(const QaLangResource* handle) { g_currentResource = handle; }

QaResourceScope::QaResourceScope(const QaLangResource* handle) : previous_(g_currentResource) {
  g_currentResource = handle;
}

QaResourceScope::~QaResourceScope() { g_currentResource = previous_; }

std::wstring KrmLoadString(unsigned id, std::wstring_view literal) {
  if (g_currentResource) {
    if (auto text = g_currentResource->strings().find(id)) return *text;
  }
  return std::wstring(literal);
}

std::wstring KrmLoadString(unsigned id, std::wstring_view literal, std::initializer_list<std::wstring_view> args) {
  const std::wstring text = KrmLoadString(id, literal);
  std::wstring out;
  out.reserve(text.size());
  for (std::size_t i = 0; i < text.size(); ++i) {
    if (text[i] == L'%' && i + 1 < text.size() && text[i + 1] >= L'1' && text[i + 1] <= L'9') {
      const std::size_t n = static_cast<std::size_t>(text[i + 1] - L'1');
      if (n < args.size()) {
        out += *(args.begin() + n);
        ++i;
        continue;
      }
    }
    out += text[i];
  }
  return out;
}
