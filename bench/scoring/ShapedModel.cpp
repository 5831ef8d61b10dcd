#include "scoring/ShapedModel.h"

#include <filesystem>
#include <string>
#include <vector>

#include "host/PluginLibrary.h"
#include "support/TemporaryFolder.h"

namespace nbscore::bench {
LoadedModel ReadShapedModel(const test::DocumentShape& shape) {
    const test::TemporaryFolder folder;
    const std::filesystem::path document = folder / "model.pmml";
    WriteDocument(shape, document);
    LoadedModel model = LoadedModel::Read(PluginLibrary::Load(NBSCORE_PLUGIN_FILE), document);
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
