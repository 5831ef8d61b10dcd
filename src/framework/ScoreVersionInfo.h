#pragma once

#include <string>

#include "framework/Export.h"

/// The version of the application that wrote a document.
///
/// The order of the operations is the order of the virtual table, which plug-ins rely on.
class SCOREFRAMEWORK_API ScoreVersionInfo {
public:
    virtual ~ScoreVersionInfo();

    virtual void SetVersionInfo(const std::string& version) = 0;
    /// A new copy; the caller owns it.
    virtual ScoreVersionInfo* Clone() const = 0;
    /// True when both hold the same text.
    virtual bool operator==(const ScoreVersionInfo& other) const = 0;
    virtual std::string GetVersionInfo() const = 0;

protected:
    ScoreVersionInfo() = default;
    ScoreVersionInfo(const ScoreVersionInfo&) = default;
    ScoreVersionInfo& operator=(const ScoreVersionInfo&) = default;
};
