// A host on Windows: loads the plug-in, reads a document with it, scores a case, and frees everything.
//
//     host C:\path\to\naivebayes.dll titanic.pmml

#include <nbscore/framework/BaseCaseRecord.h>
#include <nbscore/framework/ScoreClsResult.h>
#include <nbscore/framework/ScoreModel.h>
#include <nbscore/framework/ScoreTranslator.h>
#include <nbscore/framework/VeskException.h>
#include <filesystem>
#include <iostream>
#include <memory>
#include <stdexcept>
#include <string>

// Without these, the system's header declares a DOMDocument of its own, and a macro named GetMessage.
#define WIN32_LEAN_AND_MEAN
#define NOMINMAX
#define NOUSER
#include <windows.h>

namespace {

int Report(const std::string& document, const VeskException& refusal) {
    std::cerr << document << ": error " << refusal.GetCode() << ": " << refusal.GetMessage() << '\n';
    return 1;
}

/// When this returns, everything that the plug-in made is freed.
void Score(HMODULE plugin, const std::string& document) {
    using Factory = ScoreTranslator* (*)();
    const auto giveMyTranslator = reinterpret_cast<Factory>(GetProcAddress(plugin, "GiveMyTranslator"));
    if (giveMyTranslator == nullptr) throw std::runtime_error("the library is no plug-in: it has no GiveMyTranslator");
    const std::unique_ptr<ScoreTranslator> translator(giveMyTranslator());
    const std::unique_ptr<ScoreModel> model(translator->ParseFromTree(document, "UTF-8"));

    BaseCaseRecord record({"class", "sex", "age"});
    record.SetText(0, "first");
    record.SetText(1, "female");
    ScoreResult* result = nullptr;  // made by the first call, filled again by the next
    model->GetScore(&record, result, false);
    std::cout << result->GetPrediction()->GetString() << ' ' << result->GetConfidence() << '\n';
    delete result;
}

}  // namespace

int wmain(int argc, wchar_t** argv) {
    if (argc != 3) {
        std::cerr << "usage: host PLUGIN DOCUMENT\n";
        return 2;
    }
    // The libraries that it needs are searched for in its own folder, the program's and the system's alone. That takes a
    // whole path, with backslashes.
    const std::filesystem::path path = std::filesystem::absolute(argv[1]).make_preferred();
    const HMODULE plugin =
        LoadLibraryExW(path.c_str(), nullptr, LOAD_LIBRARY_SEARCH_DLL_LOAD_DIR | LOAD_LIBRARY_SEARCH_DEFAULT_DIRS);
    if (plugin == nullptr) {
        std::cerr << "cannot load the plug-in: error " << GetLastError() << '\n';
        return 1;
    }
    const std::u8string name = std::filesystem::path(argv[2]).u8string();
    const std::string document(name.begin(), name.end());
    int status = 0;
    try {
        Score(plugin, document);
    } catch (const VeskException& refusal) {
        status = Report(document, refusal);
    } catch (const VeskException* refusal) {  // a second target is thrown as a pointer
        status = Report(document, *refusal);
        delete refusal;
    } catch (const std::exception& fault) {
        std::cerr << fault.what() << '\n';
        status = 1;
    }
    FreeLibrary(plugin);
    return status;
}
