"""Lists the unpaid orders above an amount, the largest first:

    python report.py C:\\demo 9500

C:\\demo holds orders.dbf and customers.dbf, made by zugenerate. Needs pywin32; the package is installed, or register.cmd of the
zip was run.
"""
import pathlib
import sys

import win32com.client


def records(view):
    """The records of a view, each as {field name: value}."""
    names = [view.Fields.Item(number).Name for number in range(view.Fields.Count)]
    while not view.Eof:
        yield {name: view.Item(name).Value for name in names}
        view.MoveNext()


def main():
    if len(sys.argv) < 2:
        sys.exit(__doc__)
    folder = pathlib.Path(sys.argv[1]).resolve()
    above = float(sys.argv[2]) if len(sys.argv) > 2 else 9500.0
    functions = win32com.client.Dispatch("ZuDBFFunctions.Functions")

    view = functions.DbfSelect(f"{folder}>orders", f"NOT PAID AND AMOUNT > {above}", "ID,CUSTOMER,AMOUNT")
    if view is None:
        sys.exit(win32com.client.Dispatch("Zuengine.Zuproject").LastError)
    for order in sorted(records(view), key=lambda order: order["AMOUNT"], reverse=True):
        # A number is a key of the default index of the customers.
        customer = next(records(functions.DbfLookup(f"{folder}>customers", order["CUSTOMER"])), {"NAME": "(deleted)"})
        print(f"{order['ID']:>8.0f} {order['AMOUNT']:>12.2f}  {customer['NAME']}")


if __name__ == "__main__":
    main()
