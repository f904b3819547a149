#pragma once
#include <cstdlib>
#include <optional>
#include <string>
#include <utility>

namespace quillane {

// Sets a variable of the environment, or takes it away, until this goes.
class EnvironmentVariable {
  public:
    EnvironmentVariable(std::string name, const char* value)
        : m_name(std::move(name)) {
        if (const char* before = std::getenv(m_name.c_str())) { // NOLINT(concurrency-mt-unsafe)
            m_before = before;
        }
        set(value);
    }
    ~EnvironmentVariable() { set(m_before ? m_before->c_str() : nullptr); }
    EnvironmentVariable(const EnvironmentVariable&) = delete;
    EnvironmentVariable& operator=(const EnvironmentVariable&) = delete;

  private:
    void set(const char* value) const {
        value != nullptr ? ::setenv(m_name.c_str(), value, 1)
                         : ::unsetenv(m_name.c_str()); // NOLINT(concurrency-mt-unsafe)
    }
    std::string m_name;
    std::optional<std::string> m_before;
};

} // namespace quillane
