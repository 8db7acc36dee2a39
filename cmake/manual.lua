-- For pandoc: a link to another page of the manual leads to its HTML, a page is named by its first heading, and a line
-- above that leads to the first page.

function Link(link)
  if not link.target:match("^%a+:") then
    link.target = link.target:gsub("%.md$", ".html"):gsub("%.md#", ".html#")
  end
  return link
end

function Pandoc(page)
  for _, block in ipairs(page.blocks) do
    if block.t == "Header" then
      page.meta.pagetitle = pandoc.utils.stringify(block.content)
      break
    end
  end
  if not PANDOC_STATE.input_files[1]:match("index%.md$") then
    table.insert(page.blocks, 1, pandoc.RawBlock("html",
      '<nav><a href="index.html">The manual</a> | <a href="console.html">The console</a> | ' ..
      '<a href="keys.html">Keys</a> | <a href="messages.html">Messages</a></nav>'))
  end
  return page
end
