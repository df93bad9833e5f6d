#include "partfile/PartCheck.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <string>
#include <string_view>
#include <unordered_map>
#include <unordered_set>
#include <utility>
#include <vector>

#include "core/FieldBits.h"
#include "core/Nearest.h"
#include "core/Numbers.h"
#include "core/cPart.h"
#include "partfile/PartFile.h"
#include "partfile/PartKeys.h"

namespace {

class FieldCheck {
public:
    FieldCheck(cPart& part, PartFile& file) : part_(part), file_(file) {}

    void Run() {
        CheckPairs();
        TakeNames();
        int place = 0;
        for (const cPrgmBits& field : part_.PrgmBits()) {
            item_ = FileItems::At(part_.Items().fields, place++);
            CheckWords(field);
            CheckNames(field);
            CheckPlace(field);
            CheckList(field);
            CheckOverlap(field);
            CheckShown(field);
        }
        CheckCycles();
    }

private:
    void Report(const char* property, const std::string& text, Severity severity = Severity::Error) {
        file_.Report(severity, "BITS", PartFile::Key(property, item_), text);
    }

    void CheckPairs() {
        if (!part_.HighByte() || part_.SBIEnable()) {
            return;
        }
        int place = 0;
        for (const cRegister& one : part_.Registers()) {
            const int item = FileItems::At(part_.Items().registers, place++);
            const std::string key = PartFile::Key("HIGHLOWREGISTER", item);
            const cRegister* other = part_.Registers().Find(one.HighLowRegister());
            if (one.HighLowRegister().empty() && one.LowByte()) {
                continue;   // A register of its own.
            }
            if (other == nullptr) {
                file_.Report(Severity::Error, "REGISTERS", key,
                             UnknownName("register", one.HighLowRegister(), part_.Registers().Names()) + "; '" +
                                 one.ID() + "' goes out alone, with LE");
            } else if (other->LowByte() == one.LowByte()) {
                file_.Report(Severity::Error, "REGISTERS", key,
                             "'" + one.ID() + "' and '" + other->ID() +
                                 "' are no pair: one of them must have LOWBYTE=FALSE, the other TRUE");
            } else if (other->HighLowRegister() != one.ID()) {
                file_.Report(Severity::Warning, "REGISTERS", key,
                             "'" + one.ID() + "' names '" + other->ID() + "', which names '" +
                                 other->HighLowRegister() + "': the two of a pair name each other");
            }
        }
    }

    /// The words that choose how a field is read count letter by letter, and any other is read as something else.
    void CheckWords(const cPrgmBits& field) {
        static const std::vector<std::string_view> types{"Bit", "Counter", "List", "Bits"};
        const std::string type = file_.Text("BITS", PartFile::Key("TYPE", item_), "Bits");
        if (std::find(types.begin(), types.end(), type) == types.end()) {
            Report("TYPE", UnknownName("type", type, types) + "; '" + field.ID() + "' gets no control",
                   Severity::Warning);
        }
        const std::string format = file_.Text("BITS", PartFile::Key("FORMAT", item_), "String");
        if (format != "String" && NearestName(format, {"String"}) == "String") {
            Report("FORMAT", "'" + format + "' is not 'String', so the list is read as numbers", Severity::Warning);
        }
    }

    void CheckNames(const cPrgmBits& field) {
        if (field.Position() >= 0 && part_.Registers().Find(field.Register()) == nullptr) {
            Report("REG", UnknownName("register", field.Register(), part_.Registers().Names()) + "; the field '" +
                              field.ID() + "' can't be read or written");
        }
        const cPrgmBits* linked = part_.PrgmBits().Find(field.LinkedBits());
        if (linked != nullptr && linked->Position() < 0) {
            Report("LINKEDBITS", "'" + linked->ID() + "' has no bits (POS " + std::to_string(linked->Position()) +
                                     "), so '" + field.ID() +
                                     "' can't go on in it: it counts wrong and can't be stepped");
        }
        for (const Edge& edge : kEdges) {
            const std::string& name = (field.*edge.name)();
            if (!name.empty() && part_.PrgmBits().Find(name) == nullptr) {
                Report(edge.property,
                       UnknownName("bit field", name, part_.PrgmBits().Names()) + ", which '" + field.ID() + "' needs");
            }
        }
    }

    void CheckPlace(const cPrgmBits& field) {
        const int length = part_.RegisterLength();
        if (field.Position() < -1) {
            Report("POS", std::to_string(field.Position()) + " is no bit: -1 marks a constant, bits count from 0");
        } else if (field.Position() >= 0 && field.Length() < 1) {
            Report("LEN", "'" + field.ID() + "' has no bits: LEN counts from 1");
        } else if (field.Position() >= 0 && field.Position() + field.Length() > length) {
            Report("POS", "'" + field.ID() + "' reaches bit " + std::to_string(field.Position() + field.Length() - 1) +
                              ", but the registers end with bit " + std::to_string(length - 1));
        }
        if (field.Position() == -1 && !field.HasList()) {
            Report("POS",
                   "'" + field.ID() + "' is a constant (POS -1) without a list of at least two entries: it reads 0");
        }
        if (field.Polarity() && (field.PolarityPosition() < 0 || field.PolarityPosition() >= length)) {
            Report("POLARITYPOSITION", "the sign bit of '" + field.ID() + "' lies outside the register, bits 0 to " +
                                           std::to_string(length - 1));
        }
    }

    void CheckList(const cPrgmBits& field) {
        if (field.HasValueList() && field.HasStringList()) {
            CheckCodes(field);
            return;
        }
        if (field.Position() < 0 || !field.HasList()) {
            return;
        }
        const int codes = field.ArrayCount();
        if (field.Length() > 0 && std::ldexp(1.0, field.Length()) > codes) {
            Report("COUNT",
                   "the list of '" + field.ID() + "' has " + std::to_string(codes) + " entries, but its " +
                       std::to_string(field.Length()) + " bits count to " +
                       GeneralText(std::ldexp(1.0, field.Length()) - 1) +
                       ": beyond the list the value reads 0 and the text is empty",
                   Severity::Warning);
        }
    }

    void CheckCodes(const cPrgmBits& field) {
        if (field.StringList().size() != field.ValueList().size()) {
            Report("COUNTB", "'" + field.ID() + "' has " + std::to_string(field.ValueList().size()) + " values but " +
                                 std::to_string(field.StringList().size()) + " codes: each value needs one");
        }
        int entry = 0;
        for (const std::string& code : field.StringList()) {
            if (!ParseNumber(code)) {
                file_.Report(Severity::Error, "BITS", PartFile::Key("VALB", item_, entry),
                             "\"" + code + "\" is no number, but codes of '" + field.ID() + "' are");
            }
            ++entry;
        }
    }

    /// Two fields may share bits on purpose: a mirror, a field under another name for a PLL. Two that both have a
    /// control on the screen would turn each other.
    void CheckOverlap(const cPrgmBits& field) {
        if (field.Position() < 0 || !HasControl(field, item_)) {
            return;
        }
        auto& earlier = shown_[field.Register()];
        for (const cPrgmBits* other : earlier) {
            const bool related = field.MirrorBits() == other->ID() || other->MirrorBits() == field.ID() ||
                                 field.LinkedBits() == other->ID() || other->LinkedBits() == field.ID();
            if (!related && (BitsOf(field) & BitsOf(*other)) != 0) {
                Report("POS",
                       "'" + field.ID() + "' and '" + other->ID() + "' share bits of '" + field.Register() +
                           "': a change of one changes the other",
                       Severity::Warning);
            }
        }
        earlier.push_back(&field);
    }

    /// The fields that something needs: other fields, and PLLs.
    void TakeNames() {
        for (const cPrgmBits& field : part_.PrgmBits()) {
            for (const Edge& edge : kEdges) {
                named_.insert((field.*edge.name)());
            }
        }
        for (const int item : part_.Items().plls) {
            for (const PartKey& key : PartKeys()) {
                if (key.section == std::string_view("PLLS") && key.kind == PartKey::Kind::Item) {
                    named_.insert(file_.Text("PLLS", PartFile::Key(key.name, item), ""));
                }
            }
        }
    }

    void CheckShown(const cPrgmBits& field) {
        const std::string type = file_.Text("BITS", PartFile::Key("TYPE", item_), "Bits");
        if ((type == "Bit" || type == "Counter") && !field.Display() && !named_.contains(field.ID())) {
            const std::string key = PartFile::Key("DISPLAY", item_);
            Report("DISPLAY", "'" + field.ID() + "' is never shown: " + key + "=TRUE gives it a control",
                   Severity::Note);
        }
    }

    bool HasControl(const cPrgmBits& field, int item) const {
        return field.Display() || file_.Text("BITS", PartFile::Key("TYPE", item), "Bits") == "List";
    }

    /// The field that the edge-th kind of name of a field leads to: its position, or 0.
    int NextField(int position, std::size_t edge) const {
        const std::string& name = (part_.PrgmBits().At(position).*kEdges[edge].name)();
        return name.empty() ? 0 : part_.PrgmBits().PositionOf(name);
    }

    /// Walks along all names of all fields, depth first. A name that leads to a field of the path at hand closes
    /// a circle.
    void CheckCycles() {
        enum class Mark : unsigned char { New, OnPath, Done };
        std::vector<Mark> marks(static_cast<std::size_t>(part_.PrgmBits().Count()) + 1, Mark::New);
        std::vector<std::pair<int, std::size_t>> path;   // A field's position, and its next name to follow.
        for (int start = 1; start <= part_.PrgmBits().Count(); ++start) {
            if (marks[static_cast<std::size_t>(start)] == Mark::New) {
                path.emplace_back(start, 0);
            }
            while (!path.empty()) {
                auto& [at, edge] = path.back();
                marks[static_cast<std::size_t>(at)] = Mark::OnPath;
                if (edge == kEdges.size()) {
                    marks[static_cast<std::size_t>(at)] = Mark::Done;
                    path.pop_back();
                    continue;
                }
                const int next = NextField(at, edge++);
                if (next != 0 && marks[static_cast<std::size_t>(next)] == Mark::New) {
                    path.emplace_back(next, 0);
                } else if (next != 0 && marks[static_cast<std::size_t>(next)] == Mark::OnPath) {
                    ReportCycle(at, edge - 1, next);
                }
            }
        }
    }

    void ReportCycle(int from, std::size_t edge, int to) {
        item_ = FileItems::At(part_.Items().fields, from - 1);
        Report(kEdges[edge].property,
               "the names of fields lead from '" + part_.PrgmBits().At(to).ID() +
                   "' back to itself: an operation visits each field once, then the chain ends",
               Severity::Warning);
    }

    struct Edge {
        const char* property;
        const std::string& (cPrgmBits::*name)() const noexcept;
    };
    static constexpr std::array<Edge, 4> kEdges{{{"LINKEDBITS", &cPrgmBits::LinkedBits},
                                                 {"MIRRORBITS", &cPrgmBits::MirrorBits},
                                                 {"STEPVALUEBITNAME", &cPrgmBits::StepValueBitName},
                                                 {"GREATERBITS", &cPrgmBits::GreaterBitName}}};

    cPart& part_;
    PartFile& file_;
    int item_ = 0;
    std::unordered_map<std::string, std::vector<const cPrgmBits*>> shown_;
    std::unordered_set<std::string> named_;
};

}   // namespace

void CheckRegistersAndFields(cPart& part, PartFile& file) {
    FieldCheck(part, file).Run();
}
