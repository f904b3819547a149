#pragma once
#include "FileURL.h"
#include "InstalledApp.h"
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace quillane {

// The installed applications, as those who own what launchd starts. Keeps pointers to them. Where several could own
// something the first does. Letter case never counts in an identifier or a label. Any thread.
class StartupOwners {
  public:
    StartupOwners(const std::vector<InstalledApp>& apps, FileURL home);

    struct Claim {
        std::optional<std::string> name; // to be shown
        bool claimed = false;            // whether anybody owns it
        friend bool operator==(const Claim&, const Claim&) = default;
    };

    // Who owns the job or tool of this label and program: its application; else one of the same vendor, which the
    // name says; else the system, for what the system's vendor has labelled.
    Claim ownerName(const std::string& label, const std::optional<std::string>& program) const;
    // The application in whose bundle the program lies, else the one whose identifier the label is or extends by a
    // further part; null when there is none. A leading "~" of the program is the home folder.
    const InstalledApp* owner(const std::string& label, const std::optional<std::string>& program) const;
    // An application whose identifier has the same first two parts as the label, and at least one more; null when
    // there is none, as for every label of one part.
    const InstalledApp* vendorOwner(const std::string& label) const;

  private:
    struct Identified {
        const InstalledApp* app;
        std::string identifier; // comparable
    };

    // These take comparable labels.
    const InstalledApp* ownerOfLabel(std::string_view label) const;
    const InstalledApp* ownerOfVendor(std::string_view label) const;
    const InstalledApp* ownerOfProgram(const std::string& program) const;

    const std::vector<InstalledApp>& m_apps;
    std::vector<Identified> m_identified;
    FileURL m_home;
};

} // namespace quillane
