#pragma once

#include <functional>
#include <memory>
#include <string>
#include <string_view>

#include "framework/DocumentPlace.h"
#include "framework/Export.h"
#include "framework/Limits.h"
#include "framework/ScoreTranslator.h"
#include "framework/VeskException.h"
#include "framework/XmlFwd.h"
#include "pmml/DocumentLimits.h"
#include "pmml/Transcoder.h"

namespace nbscore {
class DocumentTree;
}

/// What every translator does alike: parsing XML safely, and small steps over a DOM.
///
/// The parser takes no document type declaration, no external entity and nothing from the network, and refuses
/// elements nested deeper than maxElementDepth, and names, tags and texts longer than any real document has
/// (document/DocumentLimits.h); each refusal carries its place. What it reads is a DocumentTree.
///
/// A translator that overrides nothing but the overload for DOM documents reads all documents so.
///
/// The static operations are for those that read a DOM. They take its UTF-16 texts; each of them walks no further than
/// it must, and none of them keeps anything.
class SCOREFRAMEWORK_API BaseTranslator : public ScoreTranslator {
public:
    static constexpr int maxElementDepth = nbscore::DocumentLimits::maxElementDepth;

    BaseTranslator();
    ~BaseTranslator() override;

    ScoreModel* ParseFromTree(const std::string& path, const std::string& encoding) override;
    ScoreModel* ParseFromTree(std::istream& source, const std::string& encoding) override;
    ScoreModel* ParseFromTree(xercesc::DOMDocument* document, const std::string& encoding) override = 0;
    ScoreModel* ParseFromTree(std::istream& source, const std::string& encoding,
                              const std::string& sourceName) override;
    /// Reads a document that was read into a tree, which stays the caller's. The overloads that read files and streams
    /// call this one; unless a translator has its own, it hands a DOM of the tree to the overload for DOM documents.
    virtual ScoreModel* ParseFromTree(const nbscore::DocumentTree& document, const std::string& encoding);

    /// What the last ParseFromTree of a DOM document or tree left half built when it failed; the caller owns it. Null
    /// when that one succeeded or failed before it had begun a model, and when it was taken already. The other
    /// overloads free it themselves.
    ScoreModel* TakeUnfinishedModel();

    /// Takes what a translator says about a document beside reading or refusing it: a text of one line or more, without
    /// a line end behind the last, the place of the element that it is about (which names no source), and what to do
    /// about it.
    using Notices =
        std::function<void(const std::string& text, const nbscore::DocumentPlace& place, std::string_view advice)>;
    /// From now on hands such texts over; without this, or with an empty function, they go to the standard
    /// error stream.
    void SetNotices(Notices taker);
    /// Says something about what stands at a place.
    /// @param printed what stands for the text on the standard error stream.
    void GiveNotice(const std::string& text, const std::string& printed, const nbscore::DocumentPlace& place,
                    std::string_view advice = nbscore::adviceForAnyRefusal) const;

    /// The first child element of this name, or null.
    static xercesc::DOMElement* GetChildByTag(const xercesc::DOMNode* node, const XMLCh* tag);
    /// The same; throws VeskException 1 when there is none.
    static xercesc::DOMElement* GetChildByTagForced(const xercesc::DOMNode* node, const XMLCh* tag);
    /// The first child that is an element, or null; null of null.
    static xercesc::DOMElement* GetFirstChildElt(const xercesc::DOMNode* node);
    /// The next sibling that is an element, or null at the end; null of null.
    static xercesc::DOMElement* GetNextSiblingElt(const xercesc::DOMNode* node);
    /// The attribute's text, or null when the element has no such attribute. It lives as long as the document.
    static const XMLCh* GetAttribute(const xercesc::DOMElement* element, const XMLCh* name);
    /// The same; throws VeskException 2 when the element has no such attribute.
    static const XMLCh* GetAttributeForced(const xercesc::DOMElement* element, const XMLCh* name);
    /// Every element of this name below the document or element, in document order. The list belongs to the
    /// document and is live: step through it upwards, and do not change the document meanwhile.
    static xercesc::DOMNodeList* GetElementsByTagName(const xercesc::DOMDocument* document, const XMLCh* tag);
    static xercesc::DOMNodeList* GetElementsByTagName(const xercesc::DOMElement* element, const XMLCh* tag);
    /// True when the XML text is exactly this UTF-8 text. Null equals only the empty text.
    static bool IsEqual(const XMLCh* xmlText, const std::string& text);
    /// The same for a text in the transcoder's encoding.
    static bool IsEqual(const Transcoder& transcoder, const XMLCh* xmlText, const std::string& text);
    /// The whole number of 32 bits that the text holds; throws VeskException 9 naming the text otherwise.
    static int VerifyInt(const XMLCh* xmlText);
    /// The finite number that the text holds; throws VeskException 9 naming the text otherwise.
    static double VerifyDouble(const XMLCh* xmlText);

    /// What the documents that are read from now on may take, and how to end reading them and, of their models,
    /// computing derived fields. In a tree that was read before, its own limits are asked too.
    void SetLimits(nbscore::Limits readingLimits);
    const nbscore::Limits& GetLimits() const { return limits; }

    /// Makes the transcoder that this translator uses until the next call.
    void CreateTranscoder(const std::string& encoding);
    /// Null until CreateTranscoder was called.
    const Transcoder* GetTranscoder() const { return transcoder.get(); }

protected:
    /// For the ParseFromTree of a DOM document or a tree: hands over what it had built when it fails. Whatever was
    /// handed over before and not taken is freed. Every such ParseFromTree begins by handing over null, so that what an
    /// earlier document left does not pass for its own.
    void LeaveUnfinishedModel(ScoreModel* model);

private:
    nbscore::Limits limits;
    std::unique_ptr<Transcoder> transcoder;
    std::unique_ptr<ScoreModel> unfinishedModel;
    Notices notices;
};
