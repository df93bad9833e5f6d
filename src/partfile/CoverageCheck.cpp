#include <bit>
#include <cmath>
#include <cstdint>
#include <string>
#include <vector>

#include "core/FieldBits.h"
#include "core/Numbers.h"
#include "core/cPart.h"
#include "partfile/PartCheck.h"
#include "partfile/PartFile.h"

namespace {

std::uint64_t Protected(const cRegister& one) {
    return static_cast<std::uint32_t>(one.Mask());
}

/// "2", "29 to 31", "0, 4 and 7 to 9".
std::string BitList(std::uint64_t bits) {
    std::vector<std::string> runs;
    while (bits != 0) {
        const int low = std::countr_zero(bits);
        const int length = std::countr_one(bits >> static_cast<unsigned>(low));
        bits &= ~FieldRun(low, length);
        runs.push_back(std::to_string(low) + (length > 1 ? " to " + std::to_string(low + length - 1) : ""));
    }
    std::string text;
    for (std::size_t i = 0; i < runs.size(); ++i) {
        text += (i == 0 ? "" : i + 1 == runs.size() ? " and " : ", ") + runs[i];
    }
    return (text.find(' ') == std::string::npos ? "bit " : "bits ") + text;
}

class CoverageCheck {
public:
    CoverageCheck(cPart& part, PartFile& file) : part_(part), file_(file) {}

    void Run() {
        int place = 0;
        for (const cPrgmBits& field : part_.PrgmBits()) {
            item_ = FileItems::At(part_.Items().fields, place++);
            CheckProtected(field);
            CheckJoint(field);
        }
        place = 0;
        for (const cRegister& one : part_.Registers()) {
            CheckUncovered(one, FileItems::At(part_.Items().registers, place++));
        }
    }

private:
    void Report(const char* property, const std::string& text) {
        file_.Report(Severity::Warning, "BITS", PartFile::Key(property, item_), text);
    }

    void CheckProtected(const cPrgmBits& field) {
        const cRegister* holder = field.Position() < 0 ? nullptr : part_.Registers().Find(field.Register());
        if (holder == nullptr) {
            return;
        }
        const std::uint64_t fixed = BitsOf(field) & Protected(*holder);
        if (fixed != 0) {
            Report("POS", BitList(fixed) + " of '" + field.ID() + "' can't be set: the MASK of '" + holder->ID() +
                              "' protects what is there");
        }
    }

    /// The pieces of a number add up only if the step of the next one is the weight of its lowest bit.
    void CheckJoint(const cPrgmBits& field) {
        const cPrgmBits* next = part_.PrgmBits().Find(field.LinkedBits());
        if (next == nullptr || field.HasList() || next->HasList() || !field.StepValueBitName().empty() ||
            !next->StepValueBitName().empty()) {
            return;
        }
        const double step = field.StepValue() * std::ldexp(1.0, field.Length());
        if (next->StepValue() != step) {
            Report("LINKEDBITS", "'" + field.ID() + "' and '" + next->ID() + "' don't join: the STEPVALUE of '" +
                                     next->ID() + "' is " + GeneralText(next->StepValue()) + " and must be " +
                                     GeneralText(step));
        } else if (field.ZeroValue() != 0 || next->ZeroValue() != 0) {
            Report("LINKEDBITS",
                   "'" + field.ID() + "' and '" + next->ID() + "' don't join: the ZEROVALUE of a piece must be 0");
        }
    }

    void CheckUncovered(const cRegister& one, int item) {
        std::uint64_t open = FieldRun(0, part_.RegisterLength()) & ~Protected(one);
        for (const cPrgmBits& field : part_.PrgmBits()) {
            if (field.Register() == one.ID() && field.Position() >= 0) {
                open &= ~BitsOf(field);
            }
        }
        if (open != 0) {
            file_.Report(Severity::Note, "REGISTERS", PartFile::Key("NAME", item),
                         "no field covers " + BitList(open) + " of '" + one.ID() + "'");
        }
    }

    cPart& part_;
    PartFile& file_;
    int item_ = 0;
};

}   // namespace

void CheckCoverage(cPart& part, PartFile& file) {
    CoverageCheck(part, file).Run();
}
