#include "tools/part/Commands.h"

std::string HelpText() {
    return R"(usage: tarnwick-part check FILE... [--json]
       tarnwick-part show FILE
       tarnwick-part words FILE [FIELD=VALUE...] [PLL.vco=MHZ...]
       tarnwick-part --help
       tarnwick-part --version

Checks and reads the part files of Tarnwick, with Tarnwick's own reader.

check  prints what is wrong with each FILE, a line each:
       FILE:LINE: SEVERITY: [SECTION] KEY: TEXT
       An error is left out or replaced by a default, a warning works though
       hardly as meant, a note needs no doing. --json prints an array of
       objects instead: file, line, severity, section, key, text. Line 0 is the
       file as a whole.
show   prints the register map: register, bits, field, start value and what the
       field takes, then the PLLs.
words  prints the register words in hexadecimal, in the order of loading, after
       the settings, which are applied one after the other:
       FIELD=VALUE  a field by its name; VALUE is a number, with or without the
                    field's units, or the text of a list's entry
       PLL.vco=MHZ  the VCO frequency of a PLL, by N and its fraction, as the
                    window sets it; "pll" names the only one
       PLL.osc=MHZ  its reference
       PLL.fpd=KHZ  its phase detector frequency, by R
       A frequency may bring its own unit: 433.5MHz, 2.4G, 200kHz.

The status is 0 if all is well, 1 if check found an error or a warning, show or
words an error, or if a setting wasn't taken as it was given, and 2 if the
command line can't be understood.
)";
}
