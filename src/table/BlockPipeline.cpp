#include "table/BlockPipeline.h"

#include <utility>

namespace nbscore {
namespace {

/// Enough that a thread which is done finds the next block read, and a slow block does not hold the others up.
constexpr std::size_t blocksPerThread = 3;

/// Scores that grew long give their memory back.
constexpr std::size_t mostTextToKeep = 4 * BlockScorer::longText;

}  // namespace

BlockPipeline::BlockPipeline(std::span<const std::unique_ptr<BlockScorer>> blockScorers, std::string sourceName,
                             char delimiter, HandOn onScores)
    : source(std::move(sourceName)),
      cellDelimiter(delimiter),
      handOn(std::move(onScores)),
      scorers(blockScorers),
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
        WakeAll();
    }
    for (std::thread& thread : threads)
        thread.join();
}

void BlockPipeline::WakeAll() {
    hasBlock.notify_all();
    hasTurn.notify_all();
    hasRoom.notify_all();
}

/// Who has to wait waits until there is room for several blocks: to be woken for each would take longer than to bring
/// it.
TableBlock& BlockPipeline::Begin() {
    std::unique_lock lock(mutex);
    if (!IsRoomFor(1)) hasRoom.wait(lock, [this] { return failure != nullptr || IsRoomFor(scorers.size()); });
    ThrowFailure();
    return SlotOf(submitted).block;
}

void BlockPipeline::Submit() {
    {
        const std::lock_guard lock(mutex);
        ++submitted;
    }
    hasBlock.notify_one();
}

void BlockPipeline::Finish() {
    std::unique_lock lock(mutex);
    hasRoom.wait(lock, [this] { return failure != nullptr || handedOn == submitted; });
    ThrowFailure();
}

void BlockPipeline::ThrowFailure() const {
    if (failure != nullptr) std::rethrow_exception(failure);
}

void BlockPipeline::Work(BlockScorer& scorer, CsvRowReader& rows) {
    BlockScores scores;
    std::uint64_t number = 0;
    while (Take(number)) {
        const std::exception_ptr thrown = Score(scorer, rows, number, scores);
        HandOnDone(number, scores, thrown);
    }
}

bool BlockPipeline::Take(std::uint64_t& number) {
    std::unique_lock lock(mutex);
    hasBlock.wait(lock, [this] { return isEnding || failure != nullptr || taken < submitted; });
    if (isEnding || failure != nullptr) return false;
    number = taken++;
    return true;
}

std::exception_ptr BlockPipeline::Score(BlockScorer& scorer, CsvRowReader& rows, std::uint64_t number,
                                        BlockScores& scores) {
    try {
        if (scores.text.capacity() > mostTextToKeep) scores.text = std::string();
        scores.Clear();
        rows.Start(SlotOf(number).block);
        scorer.Score(rows, scores, [this, number](BlockScores& part) { HandOnPart(number, part); });
    } catch (...) {
        return std::current_exception();
    }
    return nullptr;
}

/// A block that makes very much text waits for its turn and then hands the text on piece by piece.
void BlockPipeline::HandOnPart(std::uint64_t number, BlockScores& scores) {
    {
        std::unique_lock lock(mutex);
        hasTurn.wait(lock,
                     [this, number] { return isEnding || failure != nullptr || (handedOn == number && !isHandingOn); });
        if (isEnding || failure != nullptr) throw Dropped();
    }
    // No other thread hands on: it is this block's turn, and it is not done.
    handOn(scores);
    scores.Clear();
}

/// A thread hands its own block on from its own text where it can: text that another processor reads is slow to write
/// over.
void BlockPipeline::HandOnDone(std::uint64_t number, BlockScores& scores, const std::exception_ptr& thrown) {
    std::unique_lock lock(mutex);
    Slot& own = SlotOf(number);
    own.failure = thrown;
    own.isDone = true;
    if (MayHandOn() && handedOn == number) {
        HandOnScores(lock, own, scores);
    } else {
        std::swap(own.scores, scores);
    }
    while (MayHandOn() && handedOn < taken && SlotOf(handedOn).isDone) {
        Slot& next = SlotOf(handedOn);
        HandOnScores(lock, next, next.scores);
    }
}

/// Hands on what came of the block whose turn it is.
void BlockPipeline::HandOnScores(std::unique_lock<std::mutex>& lock, Slot& slot, const BlockScores& scores) {
    std::exception_ptr thrown = slot.failure;
    isHandingOn = true;
    lock.unlock();
    try {
        if (thrown == nullptr) handOn(scores);
    } catch (...) {
        thrown = std::current_exception();
    }
    lock.lock();
    isHandingOn = false;
    slot.isDone = false;
    failure = thrown;
    ++handedOn;
    if (failure != nullptr) {
        WakeAll();
        return;
    }
    hasTurn.notify_all();
    if (IsRoomFor(scorers.size()) || handedOn == submitted) hasRoom.notify_one();
}

}  // namespace nbscore
