#pragma once

#include <string>

#include "framework/Export.h"
#include "framework/ScoreVersionInfo.h"

/// A version held as text.
class SCOREFRAMEWORK_API VersionInfo : public ScoreVersionInfo {
public:
    explicit VersionInfo(const std::string& versionText);

    void SetVersionInfo(const std::string& versionText) override;
    ScoreVersionInfo* Clone() const override;
    bool operator==(const ScoreVersionInfo& other) const override;
    std::string GetVersionInfo() const override;

private:
    std::string version;
};
