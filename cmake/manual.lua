-- For pandoc: a link to another page of the manual leads to its HTML, and a page is named by its first heading.

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
  return page
end
