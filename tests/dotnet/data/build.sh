#!/usr/bin/env bash
# Compiles the assemblies beside this script anew (package mono-mcs). ShopUser is compiled against a
# facade that has the type Moved, which then only says that ShopBase has it now.
set -euo pipefail
cd "$(dirname "${BASH_SOURCE[0]}")"
work=$(mktemp -d)
trap 'rm -rf "$work"' EXIT
mcs -target:library -nologo -out:ShopBase.dll ShopBase.cs ShopMoved.cs
mcs -target:library -nologo -unsafe -r:ShopBase.dll -doc:Shop.xml -out:Shop.dll Shop.cs
mcs -target:library -nologo -out:"$work/ShopFacade.dll" ShopMoved.cs
mcs -target:library -nologo -r:"$work/ShopFacade.dll" -out:ShopUser.dll ShopUser.cs
mcs -target:library -nologo -r:ShopBase.dll -out:ShopFacade.dll ShopFacade.cs
