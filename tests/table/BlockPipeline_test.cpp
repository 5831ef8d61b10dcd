#include "table/BlockPipeline.h"

#include <gtest/gtest.h>

#include <atomic>
#include <chrono>
#include <condition_variable>
#include <functional>
#include <mutex>
#include <stdexcept>
#include <string>
#include <thread>
#include <vector>

#include "support/Message.h"

namespace nbscore::test {
namespace {

/// Something that threads wait for.
class Event {
public:
    void Happen() {
        {
            const std::lock_guard lock(mutex);
            hasHappened = true;
        }
        changed.notify_all();
    }
    void Wait() {
        std::unique_lock lock(mutex);
        changed.wait(lock, [this] { return hasHappened; });
    }
    /// Whether it happens soon.
    bool HappensWithin(std::chrono::milliseconds time) {
        std::unique_lock lock(mutex);
        return changed.wait_for(lock, time, [this] { return hasHappened; });
    }

private:
    std::mutex mutex;
    std::condition_variable changed;
    bool hasHappened = false;
};

/// What is done with a row's first cell; by default it is written out as it stands.
using Rule = std::function<void(const std::string& cell, BlockScores& scores)>;

void Echo(const std::string& cell, BlockScores& scores) {
    scores.text += cell + "\n";
}

class RuleScorer : public BlockScorer {
public:
    explicit RuleScorer(Rule rowRule) : rule(std::move(rowRule)) {}

    void Score(CsvRowReader& rows, BlockScores& scores, const OnLongText& onLongText) override {
        while (rows.ReadRow()) {
            rule(std::string(rows.GetCells().front()), scores);
            ++scores.rows;
            if (scores.text.size() >= longText) onLongText(scores);
        }
    }
    const CaseCounts& GetCounts() const override { return counts; }

private:
    Rule rule;
    CaseCounts counts;
};

std::vector<std::unique_ptr<BlockScorer>> MakeScorers(std::size_t threads, const Rule& rule) {
    std::vector<std::unique_ptr<BlockScorer>> scorers;
    for (std::size_t i = 0; i < threads; ++i)
        scorers.push_back(std::make_unique<RuleScorer>(rule));
    return scorers;
}

void Fill(TableBlock& block, const std::string& text) {
    block.room.assign(text.begin(), text.end());
    block.room.resize(text.size() + TableBlock::slack);
    block.size = text.size();
}

void Submit(BlockPipeline& pipeline, const std::string& text) {
    Fill(pipeline.Begin(), text);
    pipeline.Submit();
}

/// Blocks of one row each, their numbers.
void SubmitNumbers(BlockPipeline& pipeline, int count) {
    for (int i = 0; i < count; ++i)
        Submit(pipeline, std::to_string(i));
}

std::string NumbersBelow(int end) {
    std::string text;
    for (int i = 0; i < end; ++i)
        text += std::to_string(i) + "\n";
    return text;
}

class BlockPipelineOn : public testing::TestWithParam<std::size_t> {
protected:
    BlockPipeline::HandOn AppendToText() {
        return [this](const BlockScores& scores) {
            text += scores.text;
            rows += scores.rows;
        };
    }

    std::string text;
    std::uint64_t rows = 0;
};

TEST_P(BlockPipelineOn, BlocksAreHandedOnInTheirOrder) {
    // Some blocks take much longer than others.
    const auto rule = [](const std::string& cell, BlockScores& scores) {
        for (int i = std::stoi(cell) % 7; i > 0; --i)
            std::this_thread::yield();
        Echo(cell, scores);
    };
    const auto scorers = MakeScorers(GetParam(), rule);
    BlockPipeline pipeline(scorers, "t.csv", ',', AppendToText());
    SubmitNumbers(pipeline, 2000);
    pipeline.Finish();
    EXPECT_EQ(text, NumbersBelow(2000));
    EXPECT_EQ(rows, 2000U);
}

TEST_P(BlockPipelineOn, ABlockIsHandedOnAtOnce_ThoughTheNextOneDoesNotCome) {
    Event answered;
    const auto scorers = MakeScorers(GetParam(), Echo);
    BlockPipeline pipeline(scorers, "t.csv", ',', [&answered](const BlockScores&) { answered.Happen(); });
    Submit(pipeline, "a");
    answered.Wait();
    pipeline.Finish();
}

TEST_P(BlockPipelineOn, SoManyBlocksAreHeldAndNoMore_WhenHandingOnLagsBehind) {
    const std::size_t room = 3 * GetParam();
    std::atomic<std::size_t> handedOn = 0;
    Event isFull;
    Event isOverfull;
    const auto handOn = [&](const BlockScores&) {
        if (handedOn++ > 0) return;
        isFull.Wait();
        EXPECT_FALSE(isOverfull.HappensWithin(std::chrono::milliseconds(100)));
    };
    const auto scorers = MakeScorers(GetParam(), Echo);
    BlockPipeline pipeline(scorers, "t.csv", ',', handOn);
    for (std::size_t begun = 1; begun <= 20 * room; ++begun) {
        TableBlock& block = pipeline.Begin();
        EXPECT_LE(begun - handedOn, room);
        if (begun == room) isFull.Happen();
        if (begun == room + 1) isOverfull.Happen();
        Fill(block, "a");
        pipeline.Submit();
    }
    pipeline.Finish();
    EXPECT_EQ(handedOn, 20 * room);
}

TEST_P(BlockPipelineOn, TheFirstFailureInOrderIsThrown_AndNothingBehindItIsHandedOn) {
    const bool canFailInOtherOrder = GetParam() > 1;
    Event laterFailed;
    const auto rule = [&](const std::string& cell, BlockScores& scores) {
        if (cell == "1") {
            if (canFailInOtherOrder) laterFailed.Wait();
            throw std::runtime_error("one");
        }
        if (cell == "2") {
            laterFailed.Happen();
            throw std::runtime_error("two");
        }
        Echo(cell, scores);
    };
    for (int repetition = 0; repetition < 20; ++repetition) {
        text.clear();
        const auto scorers = MakeScorers(GetParam(), rule);
        BlockPipeline pipeline(scorers, "t.csv", ',', AppendToText());
        EXPECT_EQ(GetMessageOf<std::runtime_error>([&] {
                      SubmitNumbers(pipeline, 1000);
                      pipeline.Finish();
                  }),
                  "one");
        EXPECT_EQ(text, "0\n");
        EXPECT_EQ(GetMessageOf<std::runtime_error>([&] { pipeline.Finish(); }), "one") << "and again";
    }
}

TEST_P(BlockPipelineOn, AFaultInTheRowsIsTheBlocksFailure) {
    const auto scorers = MakeScorers(GetParam(), Echo);
    BlockPipeline pipeline(scorers, "t.csv", ',', AppendToText());
    TableBlock& block = pipeline.Begin();
    Fill(block, "a\nb\"\n");
    block.firstLine = 41;
    pipeline.Submit();
    EXPECT_EQ(GetMessageOf<std::runtime_error>([&] { pipeline.Finish(); }),
              "t.csv:42: a quote stands inside a cell that does not begin with one");
    EXPECT_EQ(text, "");
}

TEST_P(BlockPipelineOn, WhatHandingOnThrowsIsThrown_AndItIsNotCalledAgain) {
    int calls = 0;
    const auto scorers = MakeScorers(GetParam(), Echo);
    BlockPipeline pipeline(scorers, "t.csv", ',', [&calls](const BlockScores&) {
        if (++calls == 5) throw std::runtime_error("full");
    });
    EXPECT_EQ(GetMessageOf<std::runtime_error>([&] {
                  SubmitNumbers(pipeline, 1000);
                  pipeline.Finish();
              }),
              "full");
    EXPECT_EQ(calls, 5);
}

/// A block of long answers, five times as long as a text may grow.
constexpr int numLongRows = 50;
const std::string longAnswer(BlockScorer::longText / 10, 'x');

void AnswerAtLength(const std::string& cell, BlockScores& scores) {
    scores.text += cell + longAnswer + "\n";
}

TEST_P(BlockPipelineOn, LongTextsAreHandedOnInParts_InTheirOrder) {
    std::size_t longest = 0;
    std::string firstLetters;
    const auto scorers = MakeScorers(GetParam(), AnswerAtLength);
    BlockPipeline pipeline(scorers, "t.csv", ',', [&](const BlockScores& scores) {
        longest = std::max(longest, scores.text.size());
        for (std::size_t begin = 0; begin < scores.text.size(); begin = scores.text.find('\n', begin) + 1)
            firstLetters += scores.text[begin];
        rows += scores.rows;
    });
    std::string expected;
    for (char letter = 'a'; letter <= 'h'; ++letter) {
        std::string block;
        for (int i = 0; i < numLongRows; ++i)
            block += std::string(1, letter) + "\n";
        Submit(pipeline, block);
        expected += std::string(numLongRows, letter);
    }
    pipeline.Finish();
    EXPECT_EQ(firstLetters, expected);
    EXPECT_EQ(rows, expected.size());
    EXPECT_LT(longest, BlockScorer::longText + 2 * longAnswer.size());
}

TEST_P(BlockPipelineOn, WhatHandingOnAPartThrowsIsTheBlocksFailure) {
    int calls = 0;
    const auto scorers = MakeScorers(GetParam(), AnswerAtLength);
    BlockPipeline pipeline(scorers, "t.csv", ',', [&calls](const BlockScores&) {
        if (++calls == 2) throw std::runtime_error("full");
    });
    std::string block;
    for (int i = 0; i < numLongRows; ++i)
        block += "a\n";
    EXPECT_EQ(GetMessageOf<std::runtime_error>([&] {
                  for (int i = 0; i < 100; ++i)
                      Submit(pipeline, block);
                  pipeline.Finish();
              }),
              "full");
    EXPECT_EQ(calls, 2);
}

TEST_P(BlockPipelineOn, ItMayGoAtAnyTime) {
    for (int submitted = 0; submitted < 200; ++submitted) {
        text.clear();
        {
            const auto scorers = MakeScorers(GetParam(), Echo);
            BlockPipeline pipeline(scorers, "t.csv", ',', AppendToText());
            SubmitNumbers(pipeline, submitted);
            if (submitted % 2 == 0) pipeline.Begin();
        }
        const std::string all = NumbersBelow(submitted);
        EXPECT_EQ(all.compare(0, text.size(), text), 0) << "what was handed on is the beginning";
    }
}

TEST_P(BlockPipelineOn, FinishIsAtOnceDone_WhenThereIsNoBlock) {
    const auto scorers = MakeScorers(GetParam(), Echo);
    BlockPipeline pipeline(scorers, "t.csv", ',', AppendToText());
    pipeline.Finish();
    EXPECT_EQ(text, "");
}

INSTANTIATE_TEST_SUITE_P(Threads, BlockPipelineOn, testing::Values(1, 2, 3, 16),
                         [](const auto& tested) { return std::to_string(tested.param); });

TEST(BlockPipeline, ABlockThatWaitsForItsTurnIsDropped_WhenThePipelineGoes) {
    Event waits;
    Event isDropped;
    const auto rule = [&](const std::string& cell, BlockScores& scores) {
        if (cell == "first") isDropped.Wait();
        AnswerAtLength(cell, scores);
    };
    /// Tells when its block waits to hand on a part, and when it was dropped.
    class WatchedScorer : public RuleScorer {
    public:
        WatchedScorer(Rule rowRule, Event& waitsEvent, Event& droppedEvent)
            : RuleScorer(std::move(rowRule)), waits(waitsEvent), isDropped(droppedEvent) {}

        void Score(CsvRowReader& rows, BlockScores& scores, const OnLongText& onLongText) override {
            const OnLongText watched = [this, &onLongText](BlockScores& part) {
                waits.Happen();
                try {
                    onLongText(part);
                } catch (...) {
                    isDropped.Happen();
                    throw;
                }
            };
            RuleScorer::Score(rows, scores, watched);
        }

    private:
        Event& waits;
        Event& isDropped;
    };
    std::vector<std::unique_ptr<BlockScorer>> scorers;
    for (int i = 0; i < 2; ++i)
        scorers.push_back(std::make_unique<WatchedScorer>(rule, waits, isDropped));
    int calls = 0;
    {
        BlockPipeline pipeline(std::move(scorers), "t.csv", ',', [&calls](const BlockScores&) { ++calls; });
        Submit(pipeline, "first\n");
        std::string second;
        for (int i = 0; i < numLongRows; ++i)
            second += "second\n";
        Submit(pipeline, second);
        waits.Wait();
    }
    EXPECT_EQ(calls, 0);
}

}  // namespace
}  // namespace nbscore::test
