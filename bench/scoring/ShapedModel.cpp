#include "scoring/ShapedModel.h"

#include <unistd.h>

#include <filesystem>
#include <string>
#include <vector>

#include "host/PluginLibrary.h"

namespace nbscore::bench {
namespace {

/// Removes a file when it goes.
class FileOnDisk {
public:
    explicit FileOnDisk(std::filesystem::path filePath) : path(std::move(filePath)) {}
    ~FileOnDisk() {
        std::error_code ignored;
        std::filesystem::remove(path, ignored);
    }
    FileOnDisk(const FileOnDisk&) = delete;
    FileOnDisk& operator=(const FileOnDisk&) = delete;

    const std::filesystem::path& Get() const { return path; }

private:
    std::filesystem::path path;
};

}  // namespace

LoadedModel ReadShapedModel(const test::DocumentShape& shape) {
    const FileOnDisk document(std::filesystem::temp_directory_path() /
                              ("scoring_benchmark_" + std::to_string(getpid()) + ".pmml"));
    WriteDocument(shape, document.Get());
    LoadedModel model = LoadedModel::Read(PluginLibrary::Load(NBSCORE_PLUGIN_FILE), document.Get());
    model.RequireScorable();
    return model;
}

BaseCaseRecord MakeRecord(const test::DocumentShape& shape) {
    std::vector<std::string> names;
    for (std::size_t i = 0; i < shape.inputs; ++i)
        names.push_back("field" + std::to_string(i));
    return BaseCaseRecord(names);
}

void SetCategory(BaseCaseRecord& record, const test::DocumentShape& shape, std::size_t input, std::size_t category) {
    const auto position = static_cast<int>(input);
    if (shape.type == test::FieldType::Texts) {
        record.SetText(position, ValueOf(shape.type, category));
    } else {
        record.SetNumber(position, static_cast<double>(category));
    }
}

}  // namespace nbscore::bench
