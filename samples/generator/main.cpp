#include <charconv>
#include <cstdint>
#include <cstdio>
#include <exception>
#include <string_view>

#include "portable/error/Error.h"
#include "portable/files/File.h"
#include "samples/generator/BenchOrders.h"
#include "samples/generator/Customers.h"
#include "samples/generator/Folder.h"
#include "samples/generator/Orders.h"

namespace {

constexpr std::uint32_t kDemoCustomers = 10000;
constexpr std::uint32_t kDemoOrders = 40000;

constexpr const char* kUsage =
    "zugenerate FOLDER                       customers and orders, the tables of the samples\n"
    "zugenerate --orders N [--text] FOLDER   one table of N orders for measurements; --text: as orders.csv "
    "too\n"
    "FOLDER is made when it is not there. The same command always makes the same tables.\n";

struct Options {
    std::string_view folder;
    std::uint32_t orders = 0;
    bool asText = false;
    bool valid = true;
};

Options Read(int count, char** arguments) {
    Options options;
    for (int index = 1; index < count; ++index) {
        const std::string_view argument = arguments[index];
        if (argument == "--orders" && index + 1 < count) {
            const std::string_view number = arguments[++index];
            const auto end = number.data() + number.size();
            const auto result = std::from_chars(number.data(), end, options.orders);
            options.valid =
                options.valid && result.ec == std::errc() && result.ptr == end && options.orders > 0;
        } else if (argument == "--text") {
            options.asText = true;
        } else if (options.folder.empty() && !argument.starts_with("-")) {
            options.folder = argument;
        } else {
            options.valid = false;
        }
    }
    options.valid = options.valid && !options.folder.empty() && (options.orders > 0 || !options.asText);
    return options;
}

}  // namespace

int main(int count, char** arguments) {
    const Options options = Read(count, arguments);
    if (!options.valid) {
        std::fputs(kUsage, stderr);
        return 64;
    }
    try {
        zu::files::FileSystem& system = zu::files::SystemFiles();
        const std::string folder(options.folder);
        zu::samples::MakeFolder(folder);
        if (options.orders > 0) {
            zu::samples::WriteBenchOrders(system, folder, options.orders, options.asText);
            std::printf("%s: orders (%u records)\n", folder.c_str(), static_cast<unsigned>(options.orders));
        } else {
            zu::samples::WriteCustomers(system, folder, kDemoCustomers);
            zu::samples::WriteOrders(system, folder, kDemoOrders, kDemoCustomers);
            std::printf("%s: customers (%u records), orders (%u records, some marked as deleted)\n",
                        folder.c_str(), static_cast<unsigned>(kDemoCustomers),
                        static_cast<unsigned>(kDemoOrders));
        }
        return 0;
    } catch (const std::exception& failure) {
        std::fprintf(stderr, "zugenerate: %s\n", failure.what());
        return 1;
    }
}
