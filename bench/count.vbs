' count.vbs TABLE CONDITION TIMES: counts that often and prints the last count.
Option Explicit
Dim round, number
For round = 1 To CLng(Args(2))
    number = DbfCount(Args(0), Args(1))
Next
Echo number
