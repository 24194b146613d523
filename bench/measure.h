// measure.h - times of works, taken in rounds in which every candidate has its turn, so that a change of the machine's
// pace meets all of them.
#pragma once

#include <map>

#include "works.h"

struct Effort {
    unsigned rounds;
    double roundTime; // ns that a candidate gets in a round
};

// Nanoseconds of one answer, step or write, round by round; empty where a candidate does not do the work.
using Times = std::vector<double>;
double Median(Times aTime);
// The median of the ratios of each round.
double Ratio(const Times& aTime, const Times& aBase);

// Puts the region of a scene back, before every work and candidate.
class Keeper {
public:
    Keeper();
    void Restore() const;

private:
    std::vector<SwctData> aKept;
};

// What a run of a work finds and leaves, in one number.
uint64_t FoundBy(const Work& sWork, const Keeper& keeper);

// The candidates' times of a work, with caches as the runs before left them.
std::vector<Times> MeasureWarm(const std::vector<const Work*>& apWork, const Keeper& keeper, const Effort& sEffort);
// With all that it reads and writes flushed out of the caches, or, where 'boSwept', pushed out of the first two levels.
std::vector<Times> MeasureCold(const std::vector<const Work*>& apWork, const Keeper& keeper, const Effort& sEffort,
                               bool boSwept);
