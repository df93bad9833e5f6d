#include "settings/DeviceSetup.h"

#include "core/DeviceDisplay.h"
#include "core/cPart.h"
#include "ini/PrivateProfile.h"
#include "partfile/PLLSection.h"
#include "partfile/PartCheck.h"
#include "partfile/PartFile.h"
#include "partfile/PartFileReader.h"
#include "settings/Modes.h"
#include "settings/PartFilePath.h"

void ReadPartFile(cPart& part, const std::string& path) {
    PartFile file(path, part.FileProblems());
    PartFileReader reader(part, file);
    reader.ReadSetup();
    if (part.SBIEnable()) {
        part.Display().ShowSBIButtons();
    }
    reader.ReadPins();
    reader.ReadRegisters();
    reader.ReadBits();
    ReadPLLs(part, file);
    ReadModes(part, file);
    CheckRegistersAndFields(part, file);
    CheckPLLs(part, file);
    if (!PrivateProfileReadError(path)) {
        CheckKeys(part, file);
        CheckWiring(part, file);
        CheckCoverage(part, file);
        CheckStartValues(part, file);
        CheckPLLStarts(part, file);
        CheckModes(part, file);
    }
    part.FileProblems().SortByLine();
}

void SetupPartForm(cPart& part, const std::string& appPath, std::string& partName, bool hasFamily) {
    const std::string path = PartFilePath(appPath, partName);
    part.ClearPLL();
    part.Updating(true);
    part.ID(partName);
    part.Display().ShowDeviceName(partName);
    partName = path;
    ReadPartFile(part, path);
    part.Updating(false);
    part.UpdatePLLDisplay();
    part.UpdateRegisterDisplay();
    part.UpdateBitDisplay();
    part.UpdatePortDisplay();
    if (hasFamily) {
        part.Display().ShowBurstControls();
    }
}
