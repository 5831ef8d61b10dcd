#include "translator/GiveMyTranslator.h"

#include <string>

#include "translator/NaiveBayesTranslator.h"

ScoreTranslator* GiveMyTranslator() {
    return new NaiveBayesTranslator(std::string());
}
