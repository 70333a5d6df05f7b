# Writes the unpaid orders above an amount as objects, the largest first:
#   powershell -File report.ps1 C:\demo 9500
# C:\demo holds orders.dbf and customers.dbf, made by zugenerate. The package is installed, or register.cmd of the zip was run.
param(
    [Parameter(Mandatory)] [string] $Folder,
    [double] $Above = 9500
)

$Folder = (Resolve-Path $Folder).Path
$functions = New-Object -ComObject ZuDBFFunctions.Functions
$limit = $Above.ToString([Globalization.CultureInfo]::InvariantCulture)
$view = $functions.DbfSelect("$Folder>orders", "NOT PAID AND AMOUNT > $limit", 'ID,CUSTOMER,ORDERED,AMOUNT')
if ($null -eq $view) {
    Write-Error (New-Object -ComObject Zuengine.Zuproject).LastError
    exit 1
}

$orders = while (-not $view.Eof(0)) {
    $number = $view.Item('CUSTOMER').Value
    # A number is a key of the default index of the customers.
    $customer = $functions.DbfLookup("$Folder>customers", $number)
    [pscustomobject]@{
        Order    = $view.Item('ID').Value
        Customer = if ($customer.RecordCount(0) -gt 0) { $customer.Item('NAME').Value } else { "customer $number" }
        Ordered  = $view.Item('ORDERED').Value
        Amount   = $view.Item('AMOUNT').Value
    }
    $view.MoveNext()
}
$orders | Sort-Object Amount -Descending
