#include "framework/VersionInfo.h"

VersionInfo::VersionInfo(const std::string& versionText) : version(versionText) {}

void VersionInfo::SetVersionInfo(const std::string& versionText) {
    version = versionText;
}

ScoreVersionInfo* VersionInfo::Clone() const {
    return new VersionInfo(*this);
}

bool VersionInfo::operator==(const ScoreVersionInfo& other) const {
    return version == other.GetVersionInfo();
}

std::string VersionInfo::GetVersionInfo() const {
    return version;
}
