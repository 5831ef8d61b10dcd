#pragma once

#include <condition_variable>
#include <cstddef>
#include <cstdint>
#include <exception>
#include <functional>
#include <memory>
#include <mutex>
#include <span>
#include <string>
#include <thread>
#include <vector>

#include "table/BlockScorer.h"

namespace nbscore {

/// Scores blocks on several threads and hands the results on in the order of the blocks. Holds a bounded number of
/// blocks: the thread that brings them waits when scoring or writing lags behind.
///
/// One thread brings blocks. The thread that finishes the next block in order hands it on, so that an answer never
/// waits for the next block to be read. When a block fails, those before it are still handed on and those after it are
/// dropped, whatever the number of threads.
class BlockPipeline {
public:
    /// Called with the scores of a block or of a part of it, by one thread at a time, in order. What it throws is the
    /// block's failure.
    using HandOn = std::function<void(const BlockScores&)>;

    /// @param blockScorers one for each thread, borrowed; at least one. Where the system starts fewer threads, some are
    ///     not used. Throws the system's error when it starts none.
    /// @param sourceName, delimiter as for CsvRowReader.
    BlockPipeline(std::span<const std::unique_ptr<BlockScorer>> blockScorers, std::string sourceName, char delimiter,
                  HandOn onScores);
    /// Drops what has not been handed on.
    ~BlockPipeline();
    BlockPipeline(const BlockPipeline&) = delete;
    BlockPipeline& operator=(const BlockPipeline&) = delete;

    /// Waits for room and gives a block to fill. Throws the failure of the first block that failed.
    TableBlock& Begin();
    /// Has the block that was begun scored.
    void Submit();
    /// Waits until all blocks are handed on. Throws as Begin.
    void Finish();

private:
    struct Slot {
        TableBlock block;
        /// Of a block that was finished before its turn.
        BlockScores scores;
        std::exception_ptr failure;
        bool isDone = false;
    };
    /// Thrown through a scorer whose block is not needed any more.
    struct Dropped {};

    Slot& SlotOf(std::uint64_t number) { return slots[number % slots.size()]; }
    bool IsRoomFor(std::size_t blocks) const { return submitted - handedOn + blocks <= slots.size(); }
    void StartThreads();
    void Work(BlockScorer& scorer, CsvRowReader& rows);
    bool Take(std::uint64_t& number);
    std::exception_ptr Score(BlockScorer& scorer, CsvRowReader& rows, std::uint64_t number, BlockScores& scores);
    void HandOnPart(std::uint64_t number, BlockScores& scores);
    bool MayHandOn() const { return !isHandingOn && !isEnding && failure == nullptr; }
    void HandOnDone(std::uint64_t number, BlockScores& scores, const std::exception_ptr& thrown);
    void HandOnScores(std::unique_lock<std::mutex>& lock, Slot& slot, const BlockScores& scores);
    void WakeAll();
    void ThrowFailure() const;

    std::string source;
    char cellDelimiter;
    HandOn handOn;
    std::span<const std::unique_ptr<BlockScorer>> scorers;
    std::vector<CsvRowReader> readers;

    std::mutex mutex;
    /// What a thread that scores waits for, what one that waits for its turn to hand on, and what the thread that
    /// brings blocks: to wake one that has to wait on takes time from the others.
    std::condition_variable hasBlock;
    std::condition_variable hasTurn;
    std::condition_variable hasRoom;
    std::vector<Slot> slots;
    /// Blocks are numbered in order; all below these numbers are submitted, taken by a thread, handed on.
    std::uint64_t submitted = 0;
    std::uint64_t taken = 0;
    std::uint64_t handedOn = 0;
    /// Whether some thread is handing on; it does so without holding the mutex.
    bool isHandingOn = false;
    bool isEnding = false;
    /// Of the first block that failed; nothing is handed on after it.
    std::exception_ptr failure;
    std::vector<std::thread> threads;
};

}  // namespace nbscore
