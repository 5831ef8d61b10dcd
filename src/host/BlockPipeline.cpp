#include "host/BlockPipeline.h"

#include <utility>

namespace nbscore {
namespace {

/// Enough that a thread which is done finds the next block read, and a slow block holds nobody up.
constexpr std::size_t blocksPerThread = 3;

/// Scores that grew long give their memory back.
constexpr std::size_t mostTextToKeep = 4 * BlockScorer::longText;

}  // namespace

BlockPipeline::BlockPipeline(std::vector<std::unique_ptr<BlockScorer>> blockScorers, std::string sourceName,
                             char delimiter, HandOn onScores)
    : source(std::move(sourceName)),
      cellDelimiter(delimiter),
      handOn(std::move(onScores)),
      scorers(std::move(blockScorers)),
      slots(blocksPerThread * scorers.size()) {
    StartThreads();
}

/// Where the system gives no more threads, or no memory for them, those that it gave do all the work.
void BlockPipeline::StartThreads() {
    threads.reserve(scorers.size());
    // Nothing that may fail is left to the threads outside of Score.
    readers.reserve(scorers.size());
    for (std::size_t i = 0; i < scorers.size(); ++i)
        readers.emplace_back(source, cellDelimiter);
    try {
        for (std::size_t i = 0; i < scorers.size(); ++i)
            threads.emplace_back([this, i] { Work(*scorers[i], readers[i]); });
    } catch (...) {
        if (threads.empty()) throw;
    }
}

BlockPipeline::~BlockPipeline() {
    {
        const std::lock_guard lock(mutex);
        isEnding = true;
    }
    changed.notify_all();
    for (std::thread& thread : threads)
        thread.join();
}

TableBlock& BlockPipeline::Begin() {
    std::unique_lock lock(mutex);
    changed.wait(lock, [this] { return failure != nullptr || submitted - handedOn < slots.size(); });
    ThrowFailure();
    return SlotOf(submitted).block;
}

void BlockPipeline::Submit() {
    {
        const std::lock_guard lock(mutex);
        ++submitted;
    }
    changed.notify_all();
}

void BlockPipeline::Finish() {
    std::unique_lock lock(mutex);
    changed.wait(lock, [this] { return failure != nullptr || handedOn == submitted; });
    ThrowFailure();
}

void BlockPipeline::ThrowFailure() const {
    if (failure != nullptr) std::rethrow_exception(failure);
}

void BlockPipeline::Work(BlockScorer& scorer, CsvRowReader& rows) {
    std::uint64_t number = 0;
    while (Take(number)) {
        Score(scorer, rows, number);
        HandOnDone();
    }
}

bool BlockPipeline::Take(std::uint64_t& number) {
    std::unique_lock lock(mutex);
    changed.wait(lock, [this] { return isEnding || failure != nullptr || taken < submitted; });
    if (isEnding || failure != nullptr) return false;
    number = taken++;
    return true;
}

void BlockPipeline::Score(BlockScorer& scorer, CsvRowReader& rows, std::uint64_t number) {
    Slot& slot = SlotOf(number);
    std::exception_ptr thrown;
    try {
        if (slot.scores.text.capacity() > mostTextToKeep) slot.scores.text = std::string();
        slot.scores.Clear();
        rows.Start(slot.block);
        scorer.Score(rows, slot.scores, [this, number](BlockScores& scores) { HandOnPart(number, scores); });
    } catch (...) {
        thrown = std::current_exception();
    }
    const std::lock_guard lock(mutex);
    slot.failure = thrown;
    slot.isDone = true;
}

/// A block that makes very much text waits for its turn and then hands the text on piece by piece.
void BlockPipeline::HandOnPart(std::uint64_t number, BlockScores& scores) {
    {
        std::unique_lock lock(mutex);
        changed.wait(lock,
                     [this, number] { return isEnding || failure != nullptr || (handedOn == number && !isHandingOn); });
        if (isEnding || failure != nullptr) throw Dropped();
    }
    // Nobody else hands on: the block whose turn it is, is this one, and it is not done.
    handOn(scores);
    scores.Clear();
}

void BlockPipeline::HandOnDone() {
    std::unique_lock lock(mutex);
    while (!isHandingOn && !isEnding && failure == nullptr && handedOn < taken && SlotOf(handedOn).isDone) {
        Slot& slot = SlotOf(handedOn);
        std::exception_ptr thrown = slot.failure;
        isHandingOn = true;
        lock.unlock();
        try {
            if (thrown == nullptr) handOn(slot.scores);
        } catch (...) {
            thrown = std::current_exception();
        }
        lock.lock();
        isHandingOn = false;
        slot.isDone = false;
        failure = thrown;
        ++handedOn;
        changed.notify_all();
    }
}

}  // namespace nbscore
