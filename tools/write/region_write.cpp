#include "write/region_write.h"

#include "file/parse.h"
#include "objects/failure.h"
#include "objects/picture.h"
#include "state/checkpoints.h"
#include "state/folder.h"
#include "write/confirmation.h"

#include <fmt/format.h>

namespace tool {

namespace {

using enum RecordKind;

constexpr char kFormerFile[] = "confirm-former.json"; // while another change is being made of it

void KeepWhatIsThere(const std::string& text)
{
    const std::string kept = KeepAutomatic(text, FileAfter(kWrite));
    LinkState(CheckpointFile(kept), FileBefore(kWrite));
    Log(fmt::format("'{}' writes; {} is what was there", CommandLineOf("self"), kept));
}

// Of a state that cannot be written.
Failure WithWayOut(const Failure& failure)
{
    return {failure.exitCode, fmt::format("{}; nothing was changed: make room, set STATE_DIRECTORY, or add "
                                          "--no-checkpoint",
                                          failure.what())};
}

} // namespace

RegionWrite::RegionWrite(std::chrono::milliseconds wait) : m_lock(m_signals, wait)
{
    AttachForWriting();
    m_lock.RequireSameRegion();
    m_present = ReadRegion();
    m_presentText = ToText(m_present);
    m_cutShort = ReadRecord(kWrite);
    m_confirmation = ReadRecord(kConfirmation);
    if (m_confirmation && !m_confirmation->isOfThisRegion) {
        m_confirmation.reset(); // told by the next command
    }
    if (m_cutShort && !m_cutShort->isOfThisRegion) {
        m_cutShort.reset();
    }
    const bool isBefore = m_cutShort && Holds(FileBefore(kWrite));
    if (m_cutShort && (isBefore || Holds(FileAfter(kWrite))) && !NeedsRepair()) { // killed before or after all of it
        if (m_confirmation) {
            LinkState(isBefore ? FileBefore(kWrite) : FileAfter(kWrite), FileAfter(kConfirmation));
        }
        RemoveRecord(kWrite);
        m_cutShort.reset();
    }
}

bool RegionWrite::NeedsRepair() const
{
    const auto right = PictureOf(m_present);
    const auto picture = TakePicture();
    picture->sSwitch.dwSwitchUpTime = 0;
    return !IsSame(*right, *picture);
}

bool RegionWrite::Holds(const std::string& stateFile) const
{
    const auto text = ReadState(stateFile);
    return text && (*text == m_presentText || Diff(ReadStateText(stateFile, *text), m_present).empty());
}

bool RegionWrite::HoldsUnconfirmed() const
{
    return m_cutShort || Holds(FileAfter(kConfirmation));
}

void RegionWrite::ForgetConfirmation()
{
    RemoveRecord(kConfirmation);
    m_confirmation.reset();
}

void RegionWrite::Prepare(const Configuration& wanted, unsigned confirmSeconds)
{
    try {
        const StateLock lock;
        if (!m_cutShort) { // else the way back leads to what was there before that
            KeepWhatIsThere(m_presentText);
        }
        WriteState(FileAfter(kWrite), ToText(wanted));
        WriteRecord(kWrite);
        m_isNoted = true;
        if (confirmSeconds != 0) {
            Arm(confirmSeconds);
        }
    } catch (const Failure& failure) {
        Undo();
        if (failure.exitCode != kNotWritten) {
            throw;
        }
        throw WithWayOut(failure);
    }
}

void RegionWrite::Arm(unsigned confirmSeconds)
{
    m_isArmed = true;
    if (m_confirmation) { // the state to go back to stays that before the first change
        LinkState(FileAfter(kConfirmation), kFormerFile);
    } else {
        LinkState(FileBefore(kWrite), FileBefore(kConfirmation));
    }
    LinkState(FileAfter(kWrite), FileAfter(kConfirmation));
    Extend(confirmSeconds);
}

void RegionWrite::Extend(unsigned confirmSeconds)
{
    WriteRecord(kConfirmation, MillisecondsOfSystem() + int64_t{confirmSeconds} * 1000);
    StartGuard(m_signals);
}

void RegionWrite::Undo()
{
    if (m_isNoted && !m_cutShort) {
        RemoveRecord(kWrite);
    }
    if (m_isArmed && m_confirmation) {
        LinkState(kFormerFile, FileAfter(kConfirmation));
        WriteRecord(kConfirmation, *m_confirmation);
    } else if (m_isArmed) {
        RemoveRecord(kConfirmation);
    }
}

void RegionWrite::Push(const std::string& what, const Configuration& wanted)
{
    WriteToRegion(m_present, wanted);
    const auto differences = Diff(wanted, ReadRegion());
    m_cutShort.reset(); // all of it was written over
    if (!differences.empty()) {
        Undo();
        throw Failure(kFindings, fmt::format("loaded {}, but the region differs from it ({}): does another process "
                                             "write to it?",
                                             what, ToText(differences.front())));
    }
    m_lock.RequireSameRegion();
    RemoveRecord(kWrite);
}

void NoteLoss()
{
    try {
        AttachForReading();
    } catch (const Failure&) { // there is none, or none of this layout
        return;
    }
    try {
        const StateLock lock;
        const auto former = ReadRecord(kWrite);
        if (!former || !former->isOfThisRegion) {
            KeepWhatIsThere(ToText(ReadRegion()));
        }
        RemoveState(FileAfter(kWrite));
        WriteRecord(kWrite);
    } catch (const Failure& failure) {
        throw WithWayOut(failure);
    }
}

} // namespace tool
