#include "logs/ServiceNameTable.h"

#include <gtest/gtest.h>

namespace brennvar {
namespace {

TEST(ServiceNameTableTest, NamesAServiceByItsPortWhereTheProtocolFits) {
    struct Row {
        std::uint16_t port;
        int overTcp, overUdp;  // numbers of the texts; 483: unspecified
    };
    for (const Row& row :
         {Row{0, 483, 483}, Row{20, 483, 483}, Row{21, 461, 483}, Row{53, 466, 466}, Row{389, 481, 481},
          Row{443, 482, 482}, Row{444, 483, 483}, Row{13568, 483, 483}}) {  // 53, bytes swapped
        EXPECT_EQ(FindServiceName(row.port, 6).text.number, row.overTcp) << row.port;
        EXPECT_EQ(FindServiceName(row.port, 17).text.number, row.overUdp) << row.port;
        EXPECT_EQ(FindServiceName(row.port, 1).text.number, 483) << row.port;
    }
}

}  // namespace
}  // namespace brennvar
