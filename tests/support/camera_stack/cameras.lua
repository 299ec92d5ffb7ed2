-- What links a camera and the stream that asks for it, and nothing that looks for devices, keeps
-- anything on the disk or needs a session bus. The scripts are the installed ones.
components = {}

local function module(name, arguments)
  name = "libwireplumber-module-" .. name
  components[name] = { name, type = "module", args = arguments }
end

local function script(name, arguments)
  components[name] = { name, type = "script/lua", args = arguments }
end

module("metadata")
module("si-node")
module("si-standard-link")
module("si-audio-endpoint") -- the policy knows its type only from there
module("default-nodes", { ["use-persistent-storage"] = false })
module("default-nodes-api")

local policy = { move = true, follow = true }
script("create-item.lua", policy)
script("policy-node.lua", policy)
script("suspend-node.lua")
