#pragma once

#include <string>

class cPart;

/// Selects a device: takes the old one away and builds the new one from its part file. `partName` is the name as it
/// stands in the menu; on return it holds the path of the part file. `hasFamily` shows the burst controls: a device
/// from the plain menu and one selected by another program go without. Nothing goes to the port. Whatever is wrong
/// with the file ends up in the device's FileProblems; selecting never fails.
void SetupPartForm(cPart& part, const std::string& appPath, std::string& partName, bool hasFamily);
