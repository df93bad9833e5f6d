#pragma once

#include <QCheckBox>
#include <QComboBox>
#include <QLabel>
#include <QWidget>
#include <array>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "ui/bits/BitsBoard.h"
#include "ui/controls/ControlArray.h"
#include "ui/controls/Spinner.h"
#include "ui/controls/TextBox.h"
#include "ui/window/PageHost.h"

/// The page with the named view of the device: check boxes, counters and lists of the bit fields in a frame for each
/// group, and the pins.
///
/// Member 0 of each array stands on the page from the start, hidden. The first group takes over frame 0, and only the
/// control that brings it takes member 0 of its array; all others get new members.
class BitsPage : public QWidget {
    Q_OBJECT

public:
    explicit BitsPage(PageHost& host, QWidget* parent = nullptr);

    void AddCheckBox(const cPrgmBits& added, std::string_view group);
    void AddCounterBox(const cPrgmBits& added, std::string_view group);
    void AddListBox(const cPrgmBits& field, std::string_view group);
    void AddPinBox(const cPrgmPin& added);
    void ShowBits();   ///< Brings all controls into line with the fields and pins.
    void Freshen();    ///< The same, but a counter's text that is being edited stays.
    void ClearControls();

protected:
    void showEvent(QShowEvent* event) override;

private:
    enum class Kind { Bit, Counter, List, Pin };

    /// What the controls of one index stand for. The name is the key; captions only show it.
    struct Member {
        std::string name;
        bool used = false;               ///< Stands for something; member 0 may not.
        bool failed = false;             ///< The field can't be read: its controls are disabled and say why.
        std::optional<double> refused;   ///< The index that the list refused last, before the user's eyes.
    };

    /// Where a new control goes, and whether it may take member 0 of its array.
    struct Place {
        BitsFrame* frame;
        bool first;
    };

    // Building.
    void ResetDesign();
    Place FrameFor(std::string_view group);
    int NextMember(Kind kind, const Place& place, const std::string& name);
    void Make(Kind kind, int index, BitsFrame* frame);
    void Wire(Kind kind, int index);
    void ListFrames();
    void Finish();
    void OrderTabs();
    [[nodiscard]] std::vector<Member>& Members(Kind kind) { return members_[static_cast<std::size_t>(kind)]; }
    [[nodiscard]] Member& At(Kind kind, int index) { return Members(kind).at(static_cast<std::size_t>(index)); }
    [[nodiscard]] std::vector<QWidget*> ControlsOf(Kind kind, int index) const;

    // Showing.
    template <class Show>
    void ForEach(Kind kind, Show show);
    template <class Read>
    bool Try(Kind kind, int index, Read read);
    void Mark(Kind kind, int index, const std::string& failure);
    void Explain(Kind kind, int index);
    [[nodiscard]] std::string Hint(Kind kind, const Member& member);
    void ShowCheckBox(int index);
    void ShowPin(int index);
    void ShowPins();
    void ShowCounter(int index);
    bool ShowList(int index);

    // Handlers.
    void chkPrgmBit_Click(int index);
    void chkPrgmBit_MouseDown(int index) { ShowHelp(Kind::Bit, index); }
    void chkPrgmPin_Click(int index);
    void cmbBits_Click(int index);
    void cmbBits_MouseDown(int index) { ShowHelp(Kind::List, index); }
    void spnCntr_UpClick(int index);
    void spnCntr_DownClick(int index);
    void txtCntrVal_KeyPress(int index);
    void txtCntrVal_MouseDown(int index) { ShowHelp(Kind::Counter, index); }

    [[nodiscard]] cPrgmBits& Field(Kind kind, int index);
    template <class Operation>
    void Change(Operation operation);
    void EnterValue(int index, double asked);
    void RefreshBitsFirst();
    void LoadChanges();
    void ShowHelp(Kind kind, int index);

    PageHost& host_;
    BitsBoard* board_;
    ControlArray<BitsFrame> fraPrgmBits_{QStringLiteral("fraPrgmBits")};
    ControlArray<QCheckBox> chkPrgmBit_{QStringLiteral("chkPrgmBit")};
    ControlArray<QLabel> lblCntr_{QStringLiteral("lblCntr")};
    ControlArray<TextBox> txtCntrVal_{QStringLiteral("txtCntrVal")};
    ControlArray<Spinner> spnCntr_{QStringLiteral("spnCntr")};
    ControlArray<QLabel> lblCmbBits_{QStringLiteral("lblCmbBits")};
    ControlArray<QComboBox> cmbBits_{QStringLiteral("cmbBits")};
    ControlArray<BitsFrame> fraPrgmPins_{QStringLiteral("fraPrgmPins")};
    ControlArray<QCheckBox> chkPrgmPin_{QStringLiteral("chkPrgmPin")};
    std::array<std::vector<Member>, 4> members_;   ///< By kind, then by index.
    bool keepEdited_ = false;                      ///< During Freshen().
    bool unfinished_ = false;                      ///< Controls were added since the last refresh.
};
