#pragma once
// A compare observer that keeps the results list and the progress calls.

#include "compare/compareobserver.h"

#include <string>
#include <utility>
#include <vector>

namespace pvtest {

class RecordingObserver : public pv::CompareObserver {
  public:
    void setCntl(std::string_view value) override { cntl = value; }
    bool isEmpty() const override { return lines.empty(); }
    void show() override { ++shown; }
    void addLine(std::string_view line) override { lines.emplace_back(line); }
    void initializeProgress(long max) override {
        progressMax = max;
        progress = 0;
    }
    void incrementProgress() override { ++progress; }
    void completeProgress() override { completed = true; }
    // Answers "stop" once `stopAtProgress` reports have come.
    bool walkProgress(long done, long found) override {
        walk.emplace_back(done, found);
        return long(walk.size()) != stopAtProgress;
    }
    void walkEnded() override { ++walksEnded; }

    std::vector<std::string> lines;
    std::string cntl;
    int shown = 0;
    long progressMax = -1;
    long progress = 0;
    bool completed = false;
    std::vector<std::pair<long, long>> walk; // directories done, found
    long stopAtProgress = -1;
    int walksEnded = 0;
};

} // namespace pvtest
