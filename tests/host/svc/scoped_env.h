// Sets environment variables for the length of a test and puts the old values back.
#pragma once

#include <cstdlib>
#include <map>
#include <optional>
#include <string>

namespace tabulon::test {

class ScopedEnv {
 public:
  ScopedEnv() = default;
  ScopedEnv(const ScopedEnv&) = delete;
  ScopedEnv& operator=(const ScopedEnv&) = delete;
  ~ScopedEnv() {
    for (const auto& [name, value] : saved_) {
      if (value) ::setenv(name.c_str(), value->c_str(), 1);
      else ::unsetenv(name.c_str());
    }
  }
  // An empty optional removes the variable.
  void set(const std::string& name, const std::optional<std::string>& value) {
    if (!saved_.count(name)) {
      const char* old = std::getenv(name.c_str());
      saved_[name] = old ? std::optional<std::string>(old) : std::nullopt;
    }
    if (value) ::setenv(name.c_str(), value->c_str(), 1);
    else ::unsetenv(name.c_str());
  }

 private:
  std::map<std::string, std::optional<std::string>> saved_;
};

}  // namespace tabulon::test
