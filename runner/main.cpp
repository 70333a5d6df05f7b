#include <string>
#include <vector>

#include "runner/Runner.h"

int wmain(int count, wchar_t** words) {
    return zu::runner::RunProgram(std::vector<std::wstring>(words + 1, words + count));
}
