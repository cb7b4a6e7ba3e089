-- SPDX-License-Identifier: Apache-2.0
-- Gives a reference page the form of a manual page: the page's own title goes, its sections move up and
-- are spelt in capitals, a table of two columns becomes a list of terms, code is bold, and links leave only
-- their text.

local function capitals(text)
    return pandoc.Str(pandoc.text.upper(text.text))
end

function Header(header)
    if header.level == 1 then
        return {}
    end
    header.level = header.level - 1
    if header.level == 1 then
        header.content = header.content:walk({ Str = capitals })
    end
    return header
end

local function term_and_meaning(row)
    local term, meaning = row.cells[1], row.cells[2]
    return { pandoc.utils.blocks_to_inlines(term.contents), { meaning.contents } }
end

-- "Field of `package`" says what the terms belong to; "Option" says nothing that a reader does not see.
local function introduction(table)
    local heading = pandoc.utils.blocks_to_inlines(table.head.rows[1].cells[1].contents)
    if #heading == 1 then
        return pandoc.Blocks({})
    end
    return pandoc.Blocks({ pandoc.Para(heading .. { pandoc.Str(":") }) })
end

function Table(table)
    if #table.colspecs ~= 2 then
        return table
    end
    local terms = pandoc.DefinitionList(table.bodies[1].body:map(term_and_meaning))
    return introduction(table) .. pandoc.Blocks({ terms })
end

-- A line could end at a hyphen or in a word, and an option would stand in two parts: minus signs keep it
-- together, and the mark in front of them keeps it whole.
local function unbroken(before, hyphens)
    local starts_word = before == "" or before:sub(-1) == " "
    return pandoc.RawInline("man", (starts_word and "\\%" or "") .. ("\\-"):rep(#hyphens))
end

function Code(code)
    local parts = pandoc.Inlines({})
    for text, hyphens in code.text:gmatch("([^-]*)(-*)") do
        parts:insert(pandoc.Str(text))
        if hyphens ~= "" then
            parts:insert(unbroken(text, hyphens))
        end
    end
    return pandoc.Strong(parts)
end

function Link(link)
    return link.content
end
