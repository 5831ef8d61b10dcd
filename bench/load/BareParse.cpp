/// bare_parse events|tree FILE: how many seconds the XML library takes to report the file to handlers that do nothing,
/// or to make a tree of it, with its default settings. A program of its own, because loading a model must not find that
/// library in the process.

#include <xercesc/parsers/SAXParser.hpp>
#include <xercesc/parsers/XercesDOMParser.hpp>
#include <xercesc/sax/HandlerBase.hpp>
#include <xercesc/util/PlatformUtils.hpp>

#include <chrono>
#include <cstdio>
#include <cstdlib>
#include <string>

namespace {

void ReportEvents(const char* file) {
    xercesc::SAXParser parser;
    xercesc::HandlerBase handlers;
    parser.setDocumentHandler(&handlers);
    parser.setErrorHandler(&handlers);
    parser.parse(file);
}

void MakeTree(const char* file) {
    xercesc::XercesDOMParser parser;
    parser.parse(file);
    if (parser.getErrorCount() != 0 || parser.getDocument()->getDocumentElement() == nullptr) std::abort();
}

}  // namespace

int main(int count, char** arguments) {
    if (count != 3) return 2;
    xercesc::XMLPlatformUtils::Initialize();
    const auto start = std::chrono::steady_clock::now();
    if (std::string(arguments[1]) == "events") {
        ReportEvents(arguments[2]);
    } else {
        MakeTree(arguments[2]);
    }
    const std::chrono::duration<double> seconds = std::chrono::steady_clock::now() - start;
    std::printf("%.6f\n", seconds.count());
    return 0;
}
