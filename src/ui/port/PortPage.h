#pragma once

#include <QButtonGroup>
#include <QGroupBox>
#include <QLabel>
#include <QRadioButton>
#include <QScrollArea>
#include <QVBoxLayout>
#include <QWidget>

#include "machine/Timer.h"
#include "ui/controls/ControlArray.h"
#include "ui/window/PageHost.h"

class ConnectorDiagram;
class LineOptions;
class TextBox;

/// The page with the wiring: port address, the lines of Clock, Data, LE and the pins, the connector diagram, and the
/// period of the automatic reload. What is chosen here takes effect at once on the device; nothing goes to the port.
class PortPage : public QWidget {
    Q_OBJECT

public:
    PortPage(PageHost& host, Timer& reload, QWidget* parent = nullptr);

    void AddPin(const cPrgmPin& added);
    /// Brings the options into line with the device. An option that is thereby selected anew counts as clicked.
    void ShowPort();
    /// The same in silence: nothing counts as clicked, and an address that is being edited stays.
    void Freshen();
    void ClearPins();

protected:
    bool eventFilter(QObject* watched, QEvent* event) override;
    void changeEvent(QEvent* event) override;

private:
    static constexpr auto kUnusedCaption = "Prgm Pin";   ///< Of a frame that no pin has taken.

    void Build();
    void BuildScrolling();
    QGroupBox* BuildAddress();
    QLayout* BuildReload();
    QGroupBox* BuildDiagram();
    LineOptions* AddPinFrame();
    void Wire();

    void optPortAdr_Click(int index);
    void txtPortAdr_Entered();
    void optClockBit_Click(int line);
    void optDataBit_Click(int line);
    void optLEBit_Click(int line);
    void optPrgmBit_Click(int index);
    void txtAutoReload_Enter();

    void ShowAddress();
    void ColourAddress();
    void ShowPins();
    void ShowSerialLines();
    void UpdatePortDiagram();
    void WarnOfBurst();
    void HoldDiagram();
    void PlaceCorner();

    PageHost& host_;
    Timer& reload_;
    QScrollArea* scroll_;
    QWidget* cmdBoxPort_ = nullptr;
    QVBoxLayout* column_ = nullptr;     ///< The frames, one below the other.
    QWidget* diagramPlace_ = nullptr;   ///< As high as the column; the diagram stays in view in it.
    QGroupBox* frame1_ = nullptr;
    ConnectorDiagram* diagram_ = nullptr;
    bool quiet_ = false;   ///< What is selected now is no click.
    QButtonGroup* ports_;
    TextBox* txtPortAdr_;
    TextBox* txtAutoReload_;
    LineOptions* fraClockBit_;
    LineOptions* fraDataBit_;
    LineOptions* fraLEBit_;
    ControlArray<LineOptions> fraExternalPin_{QStringLiteral("fraExternalPin")};
    ControlArray<QRadioButton> optPrgmBit_{QStringLiteral("optPrgmBit")};
};
