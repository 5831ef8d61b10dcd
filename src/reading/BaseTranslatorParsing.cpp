// The half of BaseTranslator that turns a file or a stream into a document and has it read; the small steps over a
// DOM are in BaseTranslator.cpp.

#include <iostream>
#include <utility>

#include "framework/VeskException.h"
#include "pmml/DocumentFile.h"
#include "pmml/DocumentParser.h"
#include "pmml/DomDocument.h"
#include "pmml/XmlServices.h"
#include "reading/BaseTranslator.h"

BaseTranslator::BaseTranslator() {
    nbscore::PrepareLoadedXmlLibrary();
}

BaseTranslator::~BaseTranslator() = default;

ScoreModel* BaseTranslator::ParseFromTree(const std::string& path, const std::string& encoding) {
    nbscore::DocumentFile file(path, limits);
    try {
        return ParseFromTree(file.GetStream(), encoding, path);
    } catch (const VeskException&) {
        file.RequireUnbroken();
        throw;
    }
}

ScoreModel* BaseTranslator::ParseFromTree(std::istream& source, const std::string& encoding) {
    return ParseFromTree(source, encoding, std::string());
}

ScoreModel* BaseTranslator::ParseFromTree(std::istream& source, const std::string& encoding,
                                          const std::string& sourceName) {
    try {
        return nbscore::WithoutXmlFaults([&] {
            const nbscore::ParsedDocument document = nbscore::ParseDocument(source, limits);
            return ParseFromTree(*document, encoding);
        });
    } catch (VeskException& refusal) {
        unfinishedModel.reset();
        refusal.SetSource(sourceName);
        throw;
    } catch (VeskException* refusal) {
        // A second target in a mining schema is thrown as a pointer; it stays the same pointer for the catcher.
        unfinishedModel.reset();
        refusal->SetSource(sourceName);
        throw;
    } catch (...) {
        unfinishedModel.reset();
        throw;
    }
}

ScoreModel* BaseTranslator::ParseFromTree(const nbscore::DocumentTree& document, const std::string& encoding) {
    const nbscore::DomDocument dom = nbscore::WriteDom(document);
    return ParseFromTree(dom.get(), encoding);
}

ScoreModel* BaseTranslator::TakeUnfinishedModel() {
    return unfinishedModel.release();
}

void BaseTranslator::SetNotices(Notices taker) {
    notices = std::move(taker);
}

void BaseTranslator::GiveNotice(const std::string& text, const std::string& printed,
                                const nbscore::DocumentPlace& place, std::string_view advice) const {
    if (notices) {
        notices(text, place, advice);
    } else {
        std::cerr << printed << std::endl;
    }
}

void BaseTranslator::CreateTranscoder(const std::string& encoding) {
    transcoder = std::make_unique<Transcoder>(encoding);
}

void BaseTranslator::SetLimits(nbscore::Limits readingLimits) {
    limits = std::move(readingLimits);
}

void BaseTranslator::LeaveUnfinishedModel(ScoreModel* model) {
    unfinishedModel.reset(model);
}
