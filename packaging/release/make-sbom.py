#!/usr/bin/env python3
# SPDX-License-Identifier: Apache-2.0
"""make-sbom.py VERSION HOMEPAGE FOLDER [MATERIALS...]

Prints a bill of materials (SPDX 2.3, JSON) of the files in FOLDER. The name of each file of MATERIALS tells which
files it is about, materials-debian.txt about all .deb, materials-macos-ARCHITECTURE.txt about that disk image; its
lines are package URLs. SOURCE_DATE_EPOCH sets the date, so that the same files give the same bill."""

import datetime
import hashlib
import json
import os
import pathlib
import re
import sys
import urllib.parse
import uuid

PRODUCT = "SPDXRef-Product"


def identifier(kind, name):
    """SPDX allows letters, digits, dots and hyphens in its identifiers."""
    return f"SPDXRef-{kind}-" + re.sub(r"[^A-Za-z0-9.-]", "-", name)


def digest(path):
    sha256 = hashlib.sha256()
    with path.open("rb") as file:
        for block in iter(lambda: file.read(1 << 20), b""):
            sha256.update(block)
    return sha256.hexdigest()


def package(reference, name, version, **more):
    return {
        "SPDXID": reference,
        "name": name,
        "versionInfo": version,
        "downloadLocation": "NOASSERTION",
        "filesAnalyzed": False,
        "licenseConcluded": "NOASSERTION",
        "licenseDeclared": "NOASSERTION",
        "copyrightText": "NOASSERTION",
        **more,
    }


def product(version, homepage):
    return package(PRODUCT, "Pelix Customization Tool", version, homepage=homepage, licenseConcluded="Apache-2.0",
                   licenseDeclared="Apache-2.0", copyrightText="Pelix Customization Tool contributors",
                   primaryPackagePurpose="APPLICATION")


def released(path, version, homepage):
    return package(identifier("File", path.name), path.name, version, packageFileName=path.name,
                   downloadLocation=f"{homepage}/releases/download/v{version}/{urllib.parse.quote(path.name)}",
                   licenseDeclared="Apache-2.0", checksums=[{"algorithm": "SHA256", "checksumValue": digest(path)}])


def material(url):
    match = re.fullmatch(r"pkg:[a-z]+/(?:.*/)?([^/@]+)@(.+)", url)
    if not match:
        raise SystemExit(f"make-sbom.py: \"{url}\" is no package URL with a version")
    return package(identifier("Material", url.removeprefix("pkg:")), match[1], match[2],
                   externalRefs=[{"referenceCategory": "PACKAGE-MANAGER", "referenceType": "purl",
                                  "referenceLocator": url}])


def is_about(materials, path):
    """Debian's packages share their list, each disk image has its own."""
    origin = materials.stem.removeprefix("materials-")
    return path.suffix == ".deb" if origin == "debian" else path.stem.endswith(origin.removeprefix("macos"))


def relationship(one, kind, other):
    return {"spdxElementId": one, "relationshipType": kind, "relatedSpdxElement": other}


def dependencies(materials, files):
    kind = "DEPENDS_ON" if materials.stem == "materials-debian" else "CONTAINS"
    for url in materials.read_text().split():
        found = material(url)
        for path in files:
            if is_about(materials, path):
                yield found, relationship(identifier("File", path.name), kind, found["SPDXID"])


def bill(version, homepage, folder, materials):
    files = sorted(path for path in folder.iterdir() if path.is_file())
    made = [released(path, version, homepage) for path in files]
    used = [pair for file in sorted(materials) for pair in dependencies(file, files)]
    packages = {entry["SPDXID"]: entry for entry in [product(version, homepage), *made, *(pair[0] for pair in used)]}
    digests = ",".join(entry["checksums"][0]["checksumValue"] for entry in made)
    epoch = int(os.environ.get("SOURCE_DATE_EPOCH") or datetime.datetime.now().timestamp())
    return {
        "spdxVersion": "SPDX-2.3",
        "dataLicense": "CC0-1.0",
        "SPDXID": "SPDXRef-DOCUMENT",
        "name": f"Pelix-Customization-Tool-{version}",
        "documentNamespace": f"{homepage}/spdx/{version}-{uuid.uuid5(uuid.NAMESPACE_URL, digests)}",
        "creationInfo": {
            "created": datetime.datetime.fromtimestamp(epoch, datetime.timezone.utc).strftime("%Y-%m-%dT%H:%M:%SZ"),
            "creators": ["Organization: Pelix Customization Tool contributors", "Tool: make-sbom.py"],
        },
        "packages": list(packages.values()),
        "relationships": [
            relationship("SPDXRef-DOCUMENT", "DESCRIBES", PRODUCT),
            *(relationship(entry["SPDXID"], "GENERATED_FROM", PRODUCT) for entry in made),
            *(pair[1] for pair in used),
        ],
    }


def main(version, homepage, folder, *materials):
    document = bill(version, homepage, pathlib.Path(folder), [pathlib.Path(file) for file in materials])
    json.dump(document, sys.stdout, indent=2)
    print()


if __name__ == "__main__":
    if len(sys.argv) < 4:
        sys.exit(__doc__)
    main(*sys.argv[1:])
