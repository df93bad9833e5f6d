#pragma once

#include <cstddef>
#include <optional>
#include <set>
#include <string>
#include <vector>

#include "support/FakePort.h"

class cPart;
class frmPart;

/// The wiring that a device has, as its serial input sees it.
struct RobotWiring {
    int clock = 0;
    int data = 0;
    int le = 0;
    int bits = 0;
    bool inverted = false;
    bool operator==(const RobotWiring&) const = default;
};

/// What must hold between two steps of the robot.
class RobotChecks {
public:
    RobotChecks(frmPart& window, cPart& part) : window_(window), part_(part) {}

    void Before();       ///< Before a step: what may go to the port in it.
    void NoteValues();   ///< Also in the middle of a step that makes several changes.
    /// After it: what doesn't hold, a line each; empty if all is well.
    std::string After(const std::vector<PortWrite>& writes);

    [[nodiscard]] std::size_t Checked() const { return checked_; }   ///< Comparisons made so far,
    [[nodiscard]] std::size_t Decoded() const { return decoded_; }   ///< and loads that were decoded.

private:
    void Fail(const std::string& text) { faults_ += "  " + text + "\n"; }
    void Equal(const std::string& what, const std::string& screen, const std::string& model);
    template <class Read>
    void Compare(const std::string& what, const std::string& screen, Read read);
    void CheckIdle();
    void CheckRegisters();
    void CheckFields();
    void CheckPins();
    void CheckPLLs();
    void CheckCounts();
    void CheckWrites(const std::vector<PortWrite>& writes);
    void CheckLoads(const std::vector<PortWrite>& writes, const RobotWiring& wiring);
    [[nodiscard]] std::optional<RobotWiring> Wiring() const;
    [[nodiscard]] RobotWiring RawWiring() const;
    [[nodiscard]] bool Stayed(int page) const;   ///< The page was current before the step, and is.
    [[nodiscard]] int Members(const char* array) const;

    frmPart& window_;
    cPart& part_;
    std::string faults_;
    std::uint64_t device_ = 0;
    int page_ = 0;   ///< That was current before the step.
    std::optional<RobotWiring> wiring_;
    RobotWiring listed_;               ///< The wiring for which the burst list was begun.
    bool mixedList_ = false;           ///< It has changed since: commands keep their words.
    std::set<std::uint64_t> values_;   ///< What registers and burst commands hold before or after the step.
    std::set<std::uint16_t> addresses_;
    std::size_t checked_ = 0;
    std::size_t decoded_ = 0;
};
