#pragma once

// Numbers of the program's resources, for the resource compiler too. 1 is the system's number for the
// manifest that applies to the whole process; the other one is activated by the program itself.
#define ZU_PROCESS_MANIFEST 1
#define ZU_COMPONENTS_MANIFEST 100
