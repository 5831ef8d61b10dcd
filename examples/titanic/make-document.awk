# Makes titanic.pmml: awk -f make-document.awk figures.csv test-cases.csv > titanic.pmml
# Each line of the figures holds a class, a sex, an age group, and how many of these people died and survived.
# Each line of the test cases holds a person and what the model says of them; an empty cell is not known.
BEGIN { FS = "," }
FNR != NR && FNR == 1 { cells = NF; for (i = 1; i <= cells; ++i) column[i] = $i; next }
FNR != NR { ++cases; for (i = 1; i <= cells; ++i) cell[cases, i] = $i; next }
NR == 1 { inputs = NF - 2; for (i = 1; i <= inputs; ++i) name[i] = $i; next }
{
    for (i = 1; i <= inputs; ++i) {
        if (!((i, $i) in known)) { known[i, $i] = 1; value[i, ++values[i]] = $i }
        died[i, $i] += $(inputs + 1)
        survived[i, $i] += $(inputs + 2)
    }
    allDied += $(inputs + 1)
    allSurvived += $(inputs + 2)
}
function counts(indent, deaths, survivors) {
    print indent "<TargetValueCounts>"
    print indent "  <TargetValueCount value=\"no\" count=\"" deaths "\"/>"
    print indent "  <TargetValueCount value=\"yes\" count=\"" survivors "\"/>"
    print indent "</TargetValueCounts>"
}
function probability(category) {
    print "      <OutputField name=\"probability_" category "\" optype=\"continuous\" dataType=\"double\"" \
        " feature=\"probability\" value=\"" category "\"/>"
}
function verification(    i, c, row) {
    print "    <ModelVerification recordCount=\"" cases "\" fieldCount=\"" cells "\">"
    print "      <VerificationFields>"
    for (i = 1; i <= cells; ++i) print "        <VerificationField field=\"" column[i] "\"/>"
    print "      </VerificationFields>"
    print "      <InlineTable>"
    for (c = 1; c <= cases; ++c) {
        row = ""
        for (i = 1; i <= cells; ++i)
            if (cell[c, i] != "") row = row "<" column[i] ">" cell[c, i] "</" column[i] ">"
        print "        <row>" row "</row>"
    }
    print "      </InlineTable>"
    print "    </ModelVerification>"
}
END {
    print "<?xml version=\"1.0\" encoding=\"UTF-8\"?>"
    print "<PMML version=\"4.4\" xmlns=\"http://www.dmg.org/PMML-4_4\">"
    print "  <Header description=\"Who survived the Titanic: 2,201 people by class, sex and age\">"
    print "    <Application name=\"nbscore\" version=\"1.0\"/>"
    print "  </Header>"
    print "  <DataDictionary numberOfFields=\"" inputs + 1 "\">"
    for (i = 1; i <= inputs; ++i) {
        print "    <DataField name=\"" name[i] "\" optype=\"categorical\" dataType=\"string\">"
        for (v = 1; v <= values[i]; ++v) print "      <Value value=\"" value[i, v] "\"/>"
        print "    </DataField>"
    }
    print "    <DataField name=\"survived\" optype=\"categorical\" dataType=\"string\">"
    print "      <Value value=\"no\"/>"
    print "      <Value value=\"yes\"/>"
    print "    </DataField>"
    print "  </DataDictionary>"
    print "  <NaiveBayesModel modelName=\"titanic\" functionName=\"classification\" threshold=\"0.001\">"
    print "    <MiningSchema>"
    for (i = 1; i <= inputs; ++i) print "      <MiningField name=\"" name[i] "\"/>"
    print "      <MiningField name=\"survived\" usageType=\"predicted\"/>"
    print "    </MiningSchema>"
    print "    <Output>"
    probability("no")
    probability("yes")
    print "    </Output>"
    print "    <BayesInputs>"
    for (i = 1; i <= inputs; ++i) {
        print "      <BayesInput fieldName=\"" name[i] "\">"
        for (v = 1; v <= values[i]; ++v) {
            print "        <PairCounts value=\"" value[i, v] "\">"
            counts("          ", died[i, value[i, v]], survived[i, value[i, v]])
            print "        </PairCounts>"
        }
        print "      </BayesInput>"
    }
    print "    </BayesInputs>"
    print "    <BayesOutput fieldName=\"survived\">"
    counts("      ", allDied, allSurvived)
    print "    </BayesOutput>"
    verification()
    print "  </NaiveBayesModel>"
    print "</PMML>"
}
