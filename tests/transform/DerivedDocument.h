#pragma once

#include <xercesc/dom/DOMElement.hpp>

#include <memory>
#include <string>
#include <vector>

#include "framework/BaseCaseRecord.h"
#include "framework/TransformationDictionary.h"
#include "pmml/DocumentProbe.h"
#include "reading/BaseTranslator.h"
#include "support/XmlName.h"

/// The data fields of a document and its derived fields; both outlive the document.
struct DerivedDocument {
    std::unique_ptr<ScoreDictionary> data;
    std::unique_ptr<TransformationDictionary> derived;

    /// @param fields what stands in the DataDictionary, on the document's second line.
    /// @param transformations what stands in the TransformationDictionary, from the start of the third line on.
    /// @param limits of computing the derived fields.
    DerivedDocument(const std::string& fields, const std::string& transformations,
                    const std::string& encoding = "UTF-8", const nbscore::Limits& limits = {}) {
        WithDocument(
            "<PMML><DataDictionary>\n" + fields + "</DataDictionary><TransformationDictionary>\n" + transformations +
                "</TransformationDictionary></PMML>",
            [&](DocumentProbe& probe, xercesc::DOMDocument& document) {
                probe.SetLimits(limits);
                const auto* root = document.getDocumentElement();
                data.reset(
                    probe.ParseDictionary(BaseTranslator::GetChildByTag(root, nbscore::XmlName("DataDictionary"))));
                derived.reset(probe.HandleTransformationDictionary(
                    BaseTranslator::GetChildByTag(root, nbscore::XmlName("TransformationDictionary")), data.get()));
                derived->SetUpDerivedCaseRecord();
            },
            encoding);
    }

    /// A derived value as text with its kind in front, "number 1" or "text 1"; "absent" when there is none.
    std::string ValueOf(const std::string& name, const ScoreCaseRecord* record) const {
        const ScoreValue* value = derived->GetValuesForDeriedVars(record, data.get())->GetValueByName(name);
        if (!value) return "absent";
        return (value->GetType() == ScoreValue::Numeric ? "number " : "text ") + value->GetString();
    }
};

/// A case of the numeric field "x" and the text field "s".
struct Case : BaseCaseRecord {
    Case() : BaseCaseRecord({"x", "s"}) {}
    Case(double x, const std::string& s) : Case() {
        SetNumber(0, x);
        SetText(1, s);
    }
};

inline const std::string caseFields =
    "<DataField name='x' dataType='double' optype='continuous'><Value value='-9' property='missing'/></DataField>"
    "<DataField name='s' dataType='string' optype='categorical'><Value value='NA' property='missing'/></DataField>";
