"""Workbook files made part by part, as the programs that write them do, and as an attacker would."""
import io
import zipfile

MAIN = "http://schemas.openxmlformats.org/spreadsheetml/2006/main"
OFFICE = "http://schemas.openxmlformats.org/officeDocument/2006/relationships"
PACKAGE = "http://schemas.openxmlformats.org/package/2006/relationships"


def archive(parts):
    """The same parts make the same bytes, whatever the clock says."""
    content = io.BytesIO()
    with zipfile.ZipFile(content, "w", zipfile.ZIP_DEFLATED) as made:
        for name, part in parts.items():
            made.writestr(zipfile.ZipInfo(name), part, zipfile.ZIP_DEFLATED)
    return content.getvalue()


def relations(*targets):
    """(type, target) in their order, as rId1, rId2, ..."""
    inner = "".join(f'<Relationship Id="rId{i}" Type="{OFFICE}/{kind}" Target="{target}"/>'
                    for i, (kind, target) in enumerate(targets, 1))
    return f'<?xml version="1.0"?><Relationships xmlns="{PACKAGE}">{inner}</Relationships>'


def xlsx_parts(*sheets, names="", styles="", texts=(), properties="", target="worksheets/sheet{}.xml"):
    """Sheets are (name, what stands in its worksheet element)."""
    listed = "".join(f'<sheet name="{name}" sheetId="{i}" r:id="rId{i}"/>' for i, (name, _) in enumerate(sheets, 1))
    targets = [("worksheet", target.format(i)) for i in range(1, len(sheets) + 1)]
    parts = {
        "[Content_Types].xml": "<Types/>",
        "_rels/.rels": relations(("officeDocument", "xl/workbook.xml")),
        "xl/workbook.xml": f'<workbook xmlns="{MAIN}" xmlns:r="{OFFICE}">{properties}<sheets>{listed}</sheets>'
                           f"<definedNames>{names}</definedNames></workbook>",
    }
    for i, (_, content) in enumerate(sheets, 1):
        parts[f"xl/worksheets/sheet{i}.xml"] = f'<worksheet xmlns="{MAIN}" xmlns:r="{OFFICE}">{content}</worksheet>'
    if styles:
        parts["xl/styles.xml"] = f'<styleSheet xmlns="{MAIN}">{styles}</styleSheet>'
        targets.append(("styles", "styles.xml"))
    if texts:
        parts["xl/sharedStrings.xml"] = f'<sst xmlns="{MAIN}">{"".join(texts)}</sst>'
        targets.append(("sharedStrings", "sharedStrings.xml"))
    parts["xl/_rels/workbook.xml.rels"] = relations(*targets)
    return parts


def xlsx(*sheets, **more):
    return archive(xlsx_parts(*sheets, **more))


ODS_SPACES = " ".join(f'xmlns:{prefix}="urn:oasis:names:tc:opendocument:xmlns:{name}:1.0"'
                      for prefix, name in [("office", "office"), ("table", "table"), ("text", "text")]) + \
    ' xmlns:calcext="urn:org:documentfoundation:names:experimental:calc:xmlns:calcext:1.0"'


def ods(*sheets, names="", manifest="<manifest/>"):
    tables = "".join(f'<table:table table:name="{name}">{content}</table:table>' for name, content in sheets)
    return archive({
        "mimetype": "application/vnd.oasis.opendocument.spreadsheet",
        "META-INF/manifest.xml": manifest,
        "content.xml": f"<office:document-content {ODS_SPACES}><office:body><office:spreadsheet>{tables}"
                       f"<table:named-expressions>{names}</table:named-expressions>"
                       "</office:spreadsheet></office:body></office:document-content>",
    })
